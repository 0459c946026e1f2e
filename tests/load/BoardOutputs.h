#pragma once

#include "HostMeshValues.h"

#include <kova/KObject.h>
#include <orsel/Ptr.h>
#include <string>
#include <vector>
#include <zelvane/Object.h>

// What one evaluation of a load-scene board produced: whether it ran, the graph objects on
// its outputs "meshesOut" and "strandsOut", and the host meshes its "zelvaneGeoToKova" node
// made of "meshesOut".
struct BoardOutputs {
    bool evaluated = false;
    std::vector<Orsel::Ptr<Zelvane::Object>> meshObjects;
    std::vector<Orsel::Ptr<Zelvane::Object>> strandObjects;
    std::vector<HostMeshValues> hostMeshes;
};

// Evaluates `board` and reads its outputs and those of `writer` (the board's
// "zelvaneGeoToKova" node), from the calling thread.
BoardOutputs evaluateBoard(const KObject& board, const KObject& writer);

// Where `actual` first differs from `expected`, or empty when every value is the same.
std::string outputsDifference(const BoardOutputs& expected, const BoardOutputs& actual);
