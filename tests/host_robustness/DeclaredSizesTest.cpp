// Files whose headers or counts declare far more elements than they hold (10^8 to 10^12):
// `kova inspect` refuses each in one line, and never holds much more memory than a small
// file needs: reading is bounded by a budget tied to the file's size.

#include "../kova_signing/ScratchDir.h"
#include "ChildRun.h"

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

// What a lying file may cost beyond a small one, at most: 768 MiB plus 64 bytes per byte of
// the file. The budget of an import is within it (256 MiB in release builds), while reading
// what these files declare would take gigabytes.
constexpr std::size_t kAllowance = std::size_t(768) << 20;

std::string binary(std::initializer_list<float> floats) {
    std::string bytes(floats.size() * sizeof(float), '\0');
    std::memcpy(bytes.data(), floats.begin(), bytes.size());
    return bytes;
}

std::string uint32Bytes(std::uint32_t value) {
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

const std::string kPlyVertices = "element vertex 3\nproperty float x\nproperty float y\n"
                                 "property float z\n";
const std::string kPlyFaces = "element face 1\nproperty list uint int vertex_indices\n";
const char* const kDeclaresMore = "it declares more data than its {size} bytes can hold";

// A file declaring far more than it holds, and why `kova` refuses it; "{size}" stands for the
// file's size.
struct LyingFile {
    const char* name;
    std::string contents;
    const char* reason;
};

const std::string kPlyHeader = "element vertex 1000000000000\nproperty float x\n"
                               "property float y\nproperty float z\nend_header\n";

const LyingFile kLyingFiles[] = {
    {"header.ply", "ply\nformat ascii 1.0\n" + kPlyHeader + "0 0 0\n",
     "it declares 1000000000000 vertex after its header, at least 6000000000000 bytes, but "
     "holds 6"},
    {"binary.ply", "ply\nformat binary_little_endian 1.0\n" + kPlyHeader + std::string(900, '\1'),
     "it declares 1000000000000 vertex after its header, at least 12000000000000 bytes, but "
     "holds 900"},
    {"list.ply",
     "ply\nformat binary_little_endian 1.0\n" + kPlyVertices + kPlyFaces + "end_header\n" +
         binary({0, 0, 0, 1, 0, 0, 0, 1, 0}) + uint32Bytes(2000000000) + uint32Bytes(0) +
         uint32Bytes(1) + uint32Bytes(2),
     kDeclaresMore},
    {"list-ascii.ply",
     "ply\nformat ascii 1.0\n" + kPlyVertices + kPlyFaces +
         "end_header\n0 0 0\n1 0 0\n0 1 0\n1000000000 0 1 2\n",
     kDeclaresMore},
    {"header.off", "OFF\n1000000000000 1 0\n0 0 0\n3 0 0 0\n",
     "it declares 1000000000000 vertices and 1 faces, at least 6000000000008 bytes, but holds "
     "36"},
    {"count.stl", std::string(80, ' ') + uint32Bytes(0x7fffffff) + std::string(50, '\0'),
     "it declares 2147483647 triangles, at least 107374182434 bytes, but holds 134"},
    {"count.ase",
     "*3DSMAX_ASCIIEXPORT 200\n*GEOMOBJECT {\n*NODE_NAME \"a\"\n*MESH {\n"
     "*MESH_NUMVERTEX 100000000\n*MESH_NUMFACES 100000000\n"
     "*MESH_VERTEX_LIST {\n*MESH_VERTEX 0 0 0 0\n}\n}\n}\n",
     kDeclaresMore},
    {"count.x",
     "xof 0303txt 0032\nMesh m {\n100000000;\n0.0;0.0;0.0;,\n1.0;0.0;0.0;,\n"
     "0.0;1.0;0.0;;\n1;\n3;0,1,2;;\n}\n",
     kDeclaresMore},
    {"count.dae",
     "<?xml version=\"1.0\"?>\n<COLLADA xmlns=\"http://www.collada.org/2005/11/"
     "COLLADASchema\" version=\"1.4.1\"><library_geometries><geometry id=\"g\"><mesh>"
     "<source id=\"p\"><float_array id=\"pa\" count=\"1000000000\">0 0 0 1 0 0 0 1 0"
     "</float_array><technique_common><accessor source=\"#pa\" count=\"3\" stride=\"3\">"
     "<param name=\"X\" type=\"float\"/><param name=\"Y\" type=\"float\"/>"
     "<param name=\"Z\" type=\"float\"/></accessor></technique_common></source>"
     "<vertices id=\"v\"><input semantic=\"POSITION\" source=\"#p\"/></vertices>"
     "<triangles count=\"1\"><input semantic=\"VERTEX\" source=\"#v\" offset=\"0\"/>"
     "<p>0 1 2</p></triangles></mesh></geometry></library_geometries>"
     "<library_visual_scenes><visual_scene id=\"s\"><node id=\"n\">"
     "<instance_geometry url=\"#g\"/></node></visual_scene></library_visual_scenes>"
     "<scene><instance_visual_scene url=\"#s\"/></scene></COLLADA>\n",
     kDeclaresMore},
    {"count.gltf",
     "{\"asset\":{\"version\":\"2.0\"},\"scene\":0,\"scenes\":[{\"nodes\":[0]}],"
     "\"nodes\":[{\"mesh\":0}],\"meshes\":[{\"primitives\":[{\"attributes\":{\"POSITION\":0}}]}],"
     "\"buffers\":[{\"byteLength\":36,\"uri\":\"data:application/octet-stream;base64,"
     "AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA\"}],"
     "\"bufferViews\":[{\"buffer\":0,\"byteLength\":36}],"
     "\"accessors\":[{\"bufferView\":0,\"componentType\":5126,\"count\":1000000000,"
     "\"type\":\"VEC3\",\"min\":[0,0,0],\"max\":[1,1,0]}]}\n",
     "GLTF: Accessor with offset/length (0/4000000000) is out of range."},
    {"index.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 1000000000000\n",
     "line 4: vertex index 1000000000000 is out of range (3 defined so far)"},
};

TEST(DeclaredSizes, FilesThatDeclareMoreThanTheyHoldAreRefusedWithTheReasonWithinTheirBudget) {
    const ScratchDir scratch;
    const std::string small = scratch.path("small.ply");
    std::ofstream(small) << "ply\nformat ascii 1.0\n" + kPlyVertices + kPlyFaces +
                                "end_header\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n";
    const ChildRun reference = runKova({"inspect", small});
    ASSERT_EQ(reference.exitCode, 0) << reference.err;

    for (const auto& [name, contents, reason] : kLyingFiles) {
        const std::string path = scratch.path(name);
        std::ofstream(path, std::ios::binary) << contents;
        const ChildRun run = runKova({"inspect", path});
        EXPECT_TRUE(run.exited) << name << " ended by signal " << run.signal << ":\n" << run.err;
        EXPECT_EQ(run.exitCode, 1) << name << ":\n" << run.err;
        const std::string size = std::to_string(std::filesystem::file_size(path));
        std::string why = reason;
        if (const auto at = why.find("{size}"); at != std::string::npos) {
            why.replace(at, 6, size);
        }
        EXPECT_EQ(run.err, "kova: error: cannot read '" + path + "': " + why + "\n") << name;
        EXPECT_EQ(run.out, "") << name;
        const std::size_t bound =
            reference.peakResidentBytes + kAllowance + 64 * std::filesystem::file_size(path);
        EXPECT_LE(run.peakResidentBytes, bound) << name << ": " << run.err;
    }
}

} // namespace
