#pragma once

#include "../plugin/BoardScene.h"
#include "BoardOutputs.h"
#include "ThreadingForSanitizers.h"

#include <kova/KObject.h>
#include <vector>

// Boards over shared and separate host sources, with the plug-in bound. Board b reads, on its
// object-array port "meshes", the world meshes of the shared mesh shapes and of one shape of
// its own, and on its object port "curves" (one strand object) the shared curve shapes and
// curves of its own. Its graph passes both to the outputs "meshesOut" and "strandsOut"; a
// "zelvaneGeoToKova" node turns "meshesOut" back into host meshes.
//
// Meshes are wavy quad grids of kGridSide^2 faces with a UV set, a colour set and a face tag,
// converted with point and face-vertex normals; curves are open cubics of 8 CVs sampled by
// segment length, with tangents and lengths. Every array is longer than 100 elements, so the
// converters take their parallel paths.
class LoadScene : public BoardScene {
protected:
    static constexpr int kSharedMeshes = 2;
    static constexpr int kSharedCurves = 100;
    static constexpr int kOwnCurves = 20;
    static constexpr int kGridSide = 20;

    // Builds `boards` boards and their sources.
    void build(int boards);
    void TearDown() override;

    // Moves the shared sources to one of two places (0 or 1), as an edit between evaluations.
    void placeSharedSources(int place) const;

    static constexpr int gridFaces() { return kGridSide * kGridSide; }
    static constexpr int gridPoints() { return (kGridSide + 1) * (kGridSide + 1); }

    BoardOutputs evaluate(int board) const {
        return evaluateBoard(boards_[static_cast<std::size_t>(board)],
                             writers_[static_cast<std::size_t>(board)]);
    }

    // The ports, graph and merged curve attribute of a board; its "zelvaneGeoToKova" node.
    static void addBoardPorts(const KObject& board);
    static KObject addWriter(const KObject& board);

    const ThreadingForSanitizers threading_; // from before the scene is built to its end
    std::vector<KObject> boards_;
    std::vector<KObject> writers_;
    std::vector<KObject> sharedMeshes_; // shapes
    std::vector<KObject> sharedTransforms_;
};
