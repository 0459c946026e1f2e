// `kova demo`, `kova convert` and `kova inspect` as a user runs them, on the bundled samples.

#include "CliRun.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {

using nlohmann::json;

const std::string kMesh = std::string(DATA_DIR) + "/sample_mesh.obj";
const std::string kUVSets = std::string(DATA_DIR) + "/sample_mesh_uvsets.gltf";
const std::string kCurves = std::string(DATA_DIR) + "/sample_curves.obj";

class GeometryCli : public CliTest {
protected:
    static json inspect(const std::string& file, const std::string& options = "") {
        const CliRun run = kova("inspect --json '" + file + "' " + options);
        EXPECT_EQ(run.exitCode, 0) << run.output;
        return run.exitCode == 0 ? json::parse(run.output) : json();
    }
    static json readJson(const std::string& file) { return json::parse(std::ifstream(file)); }
};

// A property of an inspected object by name (null when absent).
json property(const json& object, const std::string& name) {
    for (const json& entry : object["properties"]) {
        if (entry["name"] == name) {
            return entry;
        }
    }
    return nullptr;
}

// The values of an indexed face-vertex property resolved per face-vertex.
json perFaceVertex(const json& object, const std::string& name) {
    const json data = property(object, name)["values"];
    const std::string indexName = property(data, "target")["values"];
    const json indices = property(property(object, indexName)["values"], "indices")["values"];
    json values = json::array();
    for (const json& index : indices) {
        values.push_back(property(data, "data")["values"][index.get<std::size_t>()]);
    }
    return values;
}

// The meshes of `after` hold the points, faces, UVs and first point colour set of `before`
// (OBJ keeps one colour set, the first).
void expectSameMeshes(const json& before, const json& after, const std::string& what) {
    ASSERT_EQ(after.size(), before.size()) << what;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const json& was = before[i]["object"];
        const json& is = after[i]["object"];
        for (const char* name : {"P", "faceOffset", "faceVertexPoint"}) {
            EXPECT_EQ(property(is, name)["values"], property(was, name)["values"])
                << what << " mesh " << i << " " << name;
        }
        if (!property(was, "uv").is_null()) {
            EXPECT_EQ(perFaceVertex(is, "uv"), perFaceVertex(was, "uv")) << what;
        }
        for (const json& entry : was["properties"]) {
            if (entry["target"] == "point" && entry["name"] != "N") {
                EXPECT_EQ(property(is, entry["name"])["values"], entry["values"])
                    << what << " " << entry["name"];
                break;
            }
        }
    }
}

TEST_F(GeometryCli, InspectShowsTheMeshObjectTheTranslationMakesAndOptionsReachThePlugin) {
    const json report = inspect(kMesh);
    ASSERT_EQ(report["meshes"].size(), 1u);
    EXPECT_EQ(report["meshes"][0]["name"], "cube");
    const json cube = report["meshes"][0]["object"];
    EXPECT_EQ(property(cube, "P")["type"], "array<float3>");
    EXPECT_EQ(property(cube, "P")["size"], 8);
    EXPECT_EQ(property(cube, "faceOffset")["values"], json({0, 4, 8, 12, 16, 20, 24}));
    EXPECT_EQ(property(cube, "uv")["target"], "uv_index");
    EXPECT_EQ(property(property(cube, "uv")["values"], "dccName")["values"], "map1");
    EXPECT_EQ(property(cube, "colorSet1")["target"], "point");
    EXPECT_EQ(property(property(cube, "top")["values"], "data")["values"],
              json({false, true, false, false, false, false}));
    EXPECT_TRUE(property(cube, "N").is_null());
    EXPECT_EQ(report["curves"]["count"], 0);

    const json filtered = inspect(kMesh, "--point-normals --channels '^*'")["meshes"][0]["object"];
    EXPECT_EQ(property(filtered, "N")["size"], 1); // a geometry property over the points
    EXPECT_TRUE(property(filtered, "uv").is_null());
    EXPECT_TRUE(property(filtered, "top").is_null());

    const CliRun outline = kova("inspect '" + kMesh + "'");
    ASSERT_EQ(outline.exitCode, 0) << outline.output;
    EXPECT_NE(outline.output.find("mesh cube\n"), std::string::npos) << outline.output;
    EXPECT_NE(outline.output.find("over point"), std::string::npos) << outline.output;
}

TEST_F(GeometryCli, CurvesBecomeOneStrandObjectSampledAsAsked) {
    const json cvs = inspect(kCurves)["curves"];
    ASSERT_EQ(cvs["count"], 4);
    const json byLength = inspect(kCurves, "--sampling bySegmentLength --segment-length 0.5 "
                                           "--lengths")["curves"]["object"];
    const json offsets = property(byLength, "strandOffset")["values"];
    ASSERT_EQ(offsets.size(), 5u);
    EXPECT_GT(offsets[4].get<int>(),
              property(cvs["object"], "strandOffset")["values"][4].get<int>());
    EXPECT_FALSE(property(byLength, "strandLength").is_null());
}

TEST_F(GeometryCli, ConvertRoundTripKeepsTopologyPositionsUVsColoursAndNormals) {
    const CliRun run = kova("convert '" + kMesh + "' '" + path("cube.obj") + "'");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output, kMesh +
                              ": 1 mesh(es) and 0 curve(s) in, 1 mesh(es) and 0 tube "
                              "mesh(es) out to " +
                              path("cube.obj") + "\n");
    const json before = inspect(kMesh)["meshes"];
    const json after = inspect(path("cube.obj"))["meshes"];
    expectSameMeshes(before, after, kMesh);
    EXPECT_EQ(perFaceVertex(after[0]["object"], "faceVertexN"),
              perFaceVertex(before[0]["object"], "faceVertexN"));
}

TEST_F(GeometryCli, ConvertReportsWhatWasCarriedDroppedAndTimed) {
    const CliRun run =
        kova("convert '" + kUVSets + "' '" + path("out.ply") + "' --channels 'map1 colorSet1' " +
             "--report '" + path("report.json") + "' --profile '" + path("trace.json") + "'");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    const json report = readJson(path("report.json"));
    const json uvSets = report["meshes"][0]["uvSets"];
    EXPECT_EQ(uvSets["host"], json({"map1", "map2"}));
    EXPECT_EQ(uvSets["carried"], json({"map1"}));
    EXPECT_EQ(uvSets["droppedByFilter"], json({"map2"}));
    EXPECT_EQ(uvSets["written"], json({"map1"}));
    EXPECT_TRUE(report["stageMillis"].contains("translate"));
    const json trace = readJson(path("trace.json"));
    bool meshScope = false;
    for (const json& event : trace["traceEvents"]) {
        meshScope |= event["name"] == "Kova to Zelvane Mesh translation" &&
                     event["cat"] == "Zelvane/MeshConverter";
    }
    EXPECT_TRUE(meshScope);
}

TEST_F(GeometryCli, BadFilesFormatsAndOptionsFailInOneLineThatSaysWhy) {
    std::ofstream(path("bad.obj")) << "v 0 0 0\nf 1 2 3\n";
    std::ofstream(path("notes.xyz123")) << "hello";
    const std::pair<std::string, std::string> failures[] = {
        {"convert '" + path("bad.obj") + "' '" + path("x.obj") + "'",
         "kova: error: cannot read '" + path("bad.obj") +
             "': line 2: vertex index 2 is out of range (1 defined so far)\n"},
        {"inspect '" + path("notes.xyz123") + "'", "kova: error: cannot read '" +
                                                       path("notes.xyz123") +
                                                       "': '.xyz123' is not a supported format\n"},
        {"convert '" + kMesh + "' '" + path("x.unknownext") + "'",
         "kova: error: cannot write '" + path("x.unknownext") +
             "': '.unknownext' is not a supported format\n"},
        {"inspect '" + kCurves + "' --sampling sideways",
         "kova: --sampling: sideways not in {cvs,byCVCount,bySegmentLength}\n"}};
    for (const auto& [arguments, message] : failures) {
        const CliRun run = kova(arguments);
        EXPECT_NE(run.exitCode, 0) << arguments;
        EXPECT_EQ(run.output, message);
    }
}

TEST_F(GeometryCli, DemoWritesMeshesTubesReportAndTrace) {
    const CliRun run = kova("demo --out '" + path("demo") + "'");
    ASSERT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("strand object: 4 strands"), std::string::npos) << run.output;
    for (const char* file : {"meshes.obj", "tubes.obj", "report.json", "trace.json"}) {
        EXPECT_TRUE(std::filesystem::exists(folder_ / "demo" / file)) << file;
    }
    const json report = readJson(path("demo/report.json"));
    ASSERT_EQ(report["meshes"].size(), 2u);
    EXPECT_EQ(report["meshes"][1]["uvSets"]["carried"], json({"map1", "map2"}));
    EXPECT_EQ(report["curves"]["pointsPerCurve"].size(), 4u);
    EXPECT_EQ(report["curves"]["tubeMeshes"], 1);
    EXPECT_FALSE(readJson(path("demo/trace.json"))["traceEvents"].empty());
    const json tubes = inspect(path("demo/tubes.obj"))["meshes"];
    ASSERT_EQ(tubes.size(), 1u);
    // Eight sides around every sampled point of every curve.
    EXPECT_EQ(property(tubes[0]["object"], "P")["size"].get<unsigned>(),
              8 * report["curves"]["points"].get<unsigned>());
}

// A sample of the third-party models of a few formats (Debian's assimp-testmodels), small
// enough for a test run; none when the package is absent.
std::vector<std::filesystem::path> thirdPartyModels() {
    const std::filesystem::path root = "/usr/share/assimp/models";
    std::vector<std::filesystem::path> models;
    std::error_code error;
    for (const char* folder : {"PLY", "OBJ", "glTF2", "STL"}) {
        for (auto it = std::filesystem::recursive_directory_iterator(root / folder, error);
             !error && it != std::filesystem::recursive_directory_iterator(); it.increment(error)) {
            const std::string extension = it->path().extension().string();
            if (it->is_regular_file() && it->file_size() < 64 * 1024 &&
                (extension == ".ply" || extension == ".obj" || extension == ".gltf" ||
                 extension == ".glb" || extension == ".stl")) {
                models.push_back(it->path());
            }
        }
    }
    std::sort(models.begin(), models.end());
    // Every third one keeps the run short while still spanning the formats.
    std::vector<std::filesystem::path> sample;
    for (std::size_t i = 0; i < models.size(); i += 3) {
        sample.push_back(models[i]);
    }
    return sample;
}

TEST_F(GeometryCli, ThirdPartyModelsConvertWithTheirMeshesIntactOrFailInOneLine) {
    const std::vector<std::filesystem::path> models = thirdPartyModels();
    if (models.empty()) {
        GTEST_SKIP() << "assimp-testmodels is not installed";
    }
    int converted = 0;
    for (const std::filesystem::path& model : models) {
        const std::string out = path("model.obj");
        const CliRun run = kova("convert '" + model.string() + "' '" + out + "'");
        if (run.exitCode != 0) {
            EXPECT_EQ(run.lines(), 1) << model << "\n" << run.output;
            EXPECT_EQ(run.output.rfind("kova: ", 0), 0u) << model << "\n" << run.output;
            continue;
        }
        ++converted;
        expectSameMeshes(inspect(model.string())["meshes"], inspect(out)["meshes"], model.string());
    }
    EXPECT_GE(converted, 5) << "of " << models.size();
}

} // namespace
