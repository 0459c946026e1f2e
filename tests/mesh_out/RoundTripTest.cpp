// Property test: random host meshes go through kovaMeshToObject and back through
// zelvaneMeshToKova, and come out with the same topology, points, UV sets (names included),
// colour sets, normals and component tags.

#include "MeshOutputFixture.h"

#include <algorithm>
#include <cmath>
#include <kova/KFnDagNode.h>
#include <kova/KVectorArray.h>
#include <mesh_in/MeshOptions.h>
#include <numeric>
#include <random>

namespace MeshOutputTest {
namespace {

struct ColorSetShape {
    std::string name;
    int representation;
};

// A random n-gon mesh shape with fully mapped UV sets ("map1" first), one partly mapped set
// (which input conversion leaves out), per-point colour sets, a user normal on every
// face-vertex and vertex and face tags.
class RandomMesh {
public:
    explicit RandomMesh(unsigned int seed) : random_(seed) {
        const int pointCount = pick(5, 80);
        const int faceCount = pick(1, seed % 3 == 0 ? 220 : 40);
        for (int i = 0; i < pointCount; ++i) {
            points.append({real(-5, 5), real(-5, 5), real(-5, 5)});
        }
        std::vector<int> all(pointCount);
        std::iota(all.begin(), all.end(), 0);
        for (int f = 0; f < faceCount; ++f) {
            const int size = pick(3, std::min(7, pointCount));
            std::shuffle(all.begin(), all.end(), random_);
            counts.append(size);
            for (int k = 0; k < size; ++k) {
                connects.append(all[k]);
            }
        }
        KFnMesh fn;
        fn.create(pointCount, faceCount, points, counts, connects);
        shape = fn.object();
        addUVSets(fn);
        addColorSets(fn);
        addNormals(fn);
        addTags();
    }

    KObject shape;
    KFloatPointArray points;
    KIntArray counts;
    KIntArray connects;
    std::vector<std::string> fullUVSets;
    std::vector<ColorSetShape> colorSets;

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
    float real(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random_);
    }
    bool chance() { return pick(0, 1) == 1; }

    // A UV table of random size and a random id per face-vertex; `mapped` faces only.
    void mapUVs(KFnMesh& fn, const KString& set, const std::vector<bool>& mapped) {
        const int uvCount = pick(1, 50);
        KFloatArray u, v;
        for (int i = 0; i < uvCount; ++i) {
            u.append(real(0, 1));
            v.append(real(0, 1));
        }
        KIntArray uvCounts, ids;
        for (unsigned int f = 0; f < counts.length(); ++f) {
            uvCounts.append(mapped[f] ? counts[f] : 0);
            for (int k = 0; mapped[f] && k < counts[f]; ++k) {
                ids.append(pick(0, uvCount - 1));
            }
        }
        ASSERT_TRUE(fn.setUVs(u, v, &set));
        ASSERT_TRUE(fn.assignUVs(uvCounts, ids, &set));
    }
    void addUVSets(KFnMesh& fn) {
        const std::vector<bool> all(counts.length(), true);
        mapUVs(fn, "map1", all);
        fullUVSets.push_back("map1");
        const int extra = pick(0, 3);
        for (int s = 0; s < extra; ++s) {
            const std::string name =
                s % 2 ? "map" + std::to_string(s + 4) : "set" + std::to_string(s);
            ASSERT_TRUE(fn.createUVSetDataMesh(KString(name)));
            mapUVs(fn, KString(name), all);
            fullUVSets.push_back(name);
        }
        if (counts.length() > 1) {
            std::vector<bool> partial(counts.length(), true);
            partial[0] = false;
            ASSERT_TRUE(fn.createUVSetDataMesh("partial"));
            mapUVs(fn, "partial", partial);
        }
    }
    void addColorSets(KFnMesh& fn) {
        const int sets = pick(0, 3);
        for (int s = 0; s < sets; ++s) {
            const ColorSetShape colorSet{"paint" + std::to_string(s),
                                         std::array{1, 3, 4}[pick(0, 2)]};
            const KString name(colorSet.name);
            ASSERT_TRUE(fn.createColorSetDataMesh(name, false, colorSet.representation));
            KColorArray colors;
            for (unsigned int i = 0; i < points.length(); ++i) {
                colors.append(colorSet.representation == 1
                                  ? KColor(1, 1, 1, real(0, 1))
                                  : KColor(real(0, 1), real(0, 1), real(0, 1),
                                           colorSet.representation == 4 ? real(0, 1) : 1.0f));
            }
            ASSERT_TRUE(fn.setColors(colors, &name));
            ASSERT_TRUE(fn.assignColors(connects, &name));
            colorSets.push_back(colorSet);
        }
    }
    void addNormals(KFnMesh& fn) {
        KVectorArray normals;
        KIntArray faces, vertices;
        int k = 0;
        for (unsigned int f = 0; f < counts.length(); ++f) {
            for (int c = 0; c < counts[f]; ++c, ++k) {
                KVector n(real(-1, 1), real(-1, 1), real(0.1f, 1));
                const double length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
                normals.append(KVector(n.x / length, n.y / length, n.z / length));
                faces.append(static_cast<int>(f));
                vertices.append(connects[k]);
            }
        }
        ASSERT_TRUE(fn.setFaceVertexNormals(normals, faces, vertices));
    }
    void addTags() {
        const int tags = pick(0, 3);
        for (int t = 0; t < tags; ++t) {
            const bool onFaces = chance();
            const int count =
                onFaces ? static_cast<int>(counts.length()) : static_cast<int>(points.length());
            KFnSingleIndexedComponent component;
            const KObject contents =
                component.create(onFaces ? KFn::kMeshPolygonComponent : KFn::kMeshVertComponent);
            component.addElement(pick(0, count - 1));
            for (int i = 0; i < count; ++i) {
                if (pick(0, 3) == 0) {
                    component.addElement(i);
                }
            }
            const KString name("tag" + std::to_string(t));
            KFnGeometryData data(meshData());
            ASSERT_TRUE(data.addComponentTag(name));
            ASSERT_TRUE(data.setComponentTagContents(name, contents));
        }
    }
    KObject meshData() const {
        KDataHandle handle;
        KFnDependencyNode(shape).findPlug("outMesh", false).getValue(handle);
        return handle.data();
    }

    std::mt19937 random_;
};

std::vector<KColor> faceVertexColors(const KObject& data, const std::string& set) {
    KColorArray colors;
    const KString name(set);
    KFnMesh(data).getFaceVertexColors(colors, &name);
    return std::vector<KColor>(colors.begin(), colors.end());
}

class RoundTrip : public MeshOutput, public ::testing::WithParamInterface<unsigned int> {
protected:
    using ToObject = Orsel::MutablePtr<Zelvane::Object> (*)(const KPlug&, KDataHandle&,
                                                            const MeshOptions&);

    void SetUp() override {
        MeshOutput::SetUp();
        toObject_ =
            pluginFunction<ToObject>("_Z16kovaMeshToObjectRK5KPlugR11KDataHandleRK11MeshOptions");
        ASSERT_NE(toObject_, nullptr);
    }

    // The host mesh data of the shape's world mesh and the object made of it.
    std::pair<KObject, Orsel::MutablePtr<Zelvane::Object>> toGraph(const KObject& shape) const {
        const KPlug source =
            KFnDependencyNode(shape).findPlug("worldMesh", false).elementByLogicalIndex(0);
        KDataHandle handle;
        EXPECT_TRUE(source.getValue(handle));
        MeshOptions options;
        return {handle.data(), toObject_(source, handle, options)};
    }

    ToObject toObject_ = nullptr;
};

TEST_P(RoundTrip, HostMeshComesBackUnchanged) {
    const RandomMesh host(GetParam());
    const auto [original, object] = toGraph(host.shape);
    ASSERT_TRUE(object);
    ZelvaneMeshToKovaOpts options;
    options.transferNormals = true;
    std::string colorNames;
    for (const ColorSetShape& set : host.colorSets) {
        colorNames += set.name + " ";
    }
    options.properties = Orsel::String(colorNames);
    const KObject back = convert(*object, options);

    EXPECT_EQ(hostPoints(back), hostPoints(original));
    EXPECT_EQ(hostFaces(back), hostFaces(original));

    KStringArray uvNames;
    for (const std::string& name : host.fullUVSets) {
        uvNames.append(KString(name));
        EXPECT_EQ(faceVertexUVs(back, name.c_str()), faceVertexUVs(original, name.c_str())) << name;
    }
    EXPECT_EQ(uvSetNames(back), uvNames);

    KStringArray colorSetNames;
    KFnMesh(back).getColorSetNames(colorSetNames);
    ASSERT_EQ(colorSetNames.length(), host.colorSets.size());
    for (std::size_t s = 0; s < host.colorSets.size(); ++s) {
        const ColorSetShape& set = host.colorSets[s];
        EXPECT_EQ(colorSetNames[static_cast<unsigned int>(s)], KString(set.name));
        EXPECT_EQ(KFnMesh(back).getColorRepresentation(KString(set.name)), set.representation);
        const std::vector<KColor> expected = faceVertexColors(original, set.name);
        const std::vector<KColor> actual = faceVertexColors(back, set.name);
        ASSERT_EQ(actual.size(), expected.size());
        for (std::size_t k = 0; k < actual.size(); ++k) {
            EXPECT_TRUE(actual[k].isEquivalent(expected[k], 1e-6f)) << set.name << " " << k;
        }
    }

    const std::vector<float3> normals = faceVertexNormals(back);
    const std::vector<float3> expectedNormals = faceVertexNormals(original);
    ASSERT_EQ(normals.size(), expectedNormals.size());
    for (std::size_t k = 0; k < normals.size(); ++k) {
        EXPECT_NEAR(normals[k].x, expectedNormals[k].x, 1e-6f) << k;
        EXPECT_NEAR(normals[k].y, expectedNormals[k].y, 1e-6f) << k;
        EXPECT_NEAR(normals[k].z, expectedNormals[k].z, 1e-6f) << k;
    }

    const KStringArray tags = tagNames(original);
    EXPECT_EQ(tagNames(back), tags);
    for (const KString& tag : tags) {
        EXPECT_EQ(tagElements(back, tag.asChar()), tagElements(original, tag.asChar())) << tag;
        EXPECT_EQ(KFnGeometryData(back).componentTagCategory(tag),
                  KFnGeometryData(original).componentTagCategory(tag));
    }
}

INSTANTIATE_TEST_SUITE_P(RandomMeshes, RoundTrip, ::testing::Range(1u, 25u));

} // namespace
} // namespace MeshOutputTest
