#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>
#include <zelvane/inputbypath/CurveOptions.h>
#include <zelvane/inputbypath/GeoOptions.h>
#include <zelvane/inputbypath/MeshOptions.h>
#include <zelvane/inputbypath/OptionKeys.h>

using namespace ZelvaneBoardInputByPath;
using Orsel::MetadataItem;

namespace {

MetadataItem options(std::initializer_list<std::pair<const char*, const char*>> values) {
    MetadataItem item(Orsel::String(Keys::kOptions));
    for (const auto& [key, value] : values) {
        item.addChild(MetadataItem(key, value));
    }
    return item;
}

// Port metadata that holds the options under their own child.
MetadataItem portMetadata(MetadataItem optionsItem) {
    MetadataItem port("port");
    port.addChild(MetadataItem("label", "In"));
    port.addChild(std::move(optionsItem));
    return port;
}

TEST(Options, OptionsAreFoundUnderPortMetadataOrDirectlyAndPathsAreSplitAndTrimmed) {
    const MetadataItem direct =
        options({{"noShape", "true"}, {"paths", " |grp|mesh1 ;;curve* ; "}});
    const MetadataItem port = portMetadata(direct);
    EXPECT_EQ(&getOptions(direct), &direct);
    EXPECT_EQ(getOptions(port).name(), Keys::kOptions);
    for (const MetadataItem* item : {&direct, &port}) {
        Options parsed;
        ASSERT_TRUE(parsed.parse(*item));
        EXPECT_TRUE(parsed.noShape);
        EXPECT_EQ(parsed.paths, (Orsel::Array<Orsel::String>{"|grp|mesh1", "curve*"}));
    }
}

TEST(Options, MeshKeysAreParsedThroughTheBaseInterface) {
    MeshOptions mesh;
    Options& base = mesh;
    ASSERT_TRUE(base.parse(options({{"componentTagFilter", "top*"},
                                    {"faceVertexNormals", "off"},
                                    {"pointNormals", "1"},
                                    {"faceNormals", "YES"},
                                    {"channelFilter", "* ^uv2"},
                                    {"somethingElse", "ignored"}})));
    EXPECT_EQ(mesh.componentTagFilter, "top*");
    EXPECT_FALSE(mesh.faceVertexNormals);
    EXPECT_TRUE(mesh.pointNormals);
    EXPECT_TRUE(mesh.faceNormals);
    EXPECT_EQ(mesh.channelFilterExpression(), "* ^uv2");
    EXPECT_TRUE(mesh.channelFilter->accepts("map1"));
    EXPECT_FALSE(mesh.channelFilter->accepts("uv2"));
}

TEST(Options, CurveKeysAcceptNamesAndNumbers) {
    CurveOptions curve;
    ASSERT_TRUE(curve.parse(options({{"sampling", "BYSEGMENTLENGTH"},
                                     {"tagTransfer", "1"},
                                     {"sampleRate", "2.5"},
                                     {"segmentLength", "0"},
                                     {"computeTangents", "true"},
                                     {"addLengths", "on"},
                                     {"uniformByLength", "1"},
                                     {"evenSegments", "true"},
                                     {"componentTags", ""}})));
    EXPECT_EQ(curve.sampling, CurveSampling::BySegmentLength);
    EXPECT_EQ(curve.tagTransfer, TagTransfer::BothNeighbours);
    EXPECT_EQ(curve.sampleRate, 2.5f);
    EXPECT_EQ(curve.segmentLength, 0.0f);
    EXPECT_TRUE(curve.computeTangents && curve.addLengths && curve.uniformByLength &&
                curve.evenSegments);
    EXPECT_EQ(curve.componentTags, "");
    ASSERT_TRUE(curve.parse(options({{"sampling", "1"}})));
    EXPECT_EQ(curve.sampling, CurveSampling::ByCVCount);
}

TEST(Options, BadValuesFailButKeepTheDocumentedDefaultsAndTheRestIsRead) {
    CurveOptions curve;
    EXPECT_FALSE(curve.parse(options({{"sampling", "3"},
                                      {"tagTransfer", "closest"},
                                      {"sampleRate", "fast"},
                                      {"segmentLength", "inf"},
                                      {"componentTags", "a^b"},
                                      {"noShape", "true"}})));
    EXPECT_TRUE(curve.noShape);
    EXPECT_TRUE(curve.paths.empty());
    EXPECT_EQ(curve.sampling, CurveSampling::CVs);
    EXPECT_EQ(curve.tagTransfer, TagTransfer::NearestCV);
    EXPECT_EQ(curve.sampleRate, 1.0f);
    EXPECT_EQ(curve.segmentLength, 1.0f);
    EXPECT_EQ(curve.componentTags, "*");
    EXPECT_FALSE(curve.computeTangents);
    EXPECT_FALSE(curve.uniformByLength);
    EXPECT_FALSE(curve.evenSegments);
    EXPECT_FALSE(curve.addLengths);

    MeshOptions mesh;
    EXPECT_FALSE(mesh.parse(options({{"channelFilter", "^"}, {"noShape", "2"}})));
    EXPECT_EQ(mesh.channelFilterExpression(), "*");
    EXPECT_TRUE(mesh.channelFilter->accepts("anything"));
    EXPECT_FALSE(mesh.noShape);
    EXPECT_EQ(mesh.componentTagFilter, "*");
    EXPECT_TRUE(mesh.faceVertexNormals);
    EXPECT_FALSE(mesh.pointNormals);
    EXPECT_FALSE(mesh.faceNormals);
}

TEST(Options, StoredOptionsParseBackToTheSameValues) {
    CurveOptions curve;
    curve.paths = {"|a|b", "c"};
    curve.noShape = true;
    curve.componentTags = "tip*";
    curve.sampling = CurveSampling::ByCVCount;
    curve.sampleRate = 0.1f;
    curve.segmentLength = 3.25f;
    curve.tagTransfer = TagTransfer::BothNeighbours;
    curve.uniformByLength = true;
    MetadataItem stored;
    curve.storeAttributes(stored);
    EXPECT_EQ(stored.findChild(Keys::kSampling)->value(), "byCVCount");

    CurveOptions reread;
    ASSERT_TRUE(reread.parse(stored));
    EXPECT_EQ(reread.paths, curve.paths);
    EXPECT_TRUE(reread.noShape);
    EXPECT_EQ(reread.componentTags, "tip*");
    EXPECT_EQ(reread.sampling, CurveSampling::ByCVCount);
    EXPECT_EQ(reread.sampleRate, 0.1f);
    EXPECT_EQ(reread.segmentLength, 3.25f);
    EXPECT_EQ(reread.tagTransfer, TagTransfer::BothNeighbours);
    EXPECT_TRUE(reread.uniformByLength);
}

TEST(Options, CopiesKeepTheirOwnChannelFilterOrShareAnExternalOne) {
    MeshOptions original;
    ASSERT_TRUE(original.setChannelFilter("keep"));
    const MeshOptions copy = original;
    EXPECT_NE(copy.channelFilter, original.channelFilter);
    ASSERT_TRUE(original.setChannelFilter("other"));
    EXPECT_TRUE(copy.channelFilter->accepts("keep"));
    EXPECT_FALSE(copy.channelFilter->accepts("other"));

    ZEL::Utils::ChannelParser external;
    ASSERT_TRUE(external.parses("ext"));
    original.channelFilter = &external;
    MeshOptions assigned;
    assigned = original;
    EXPECT_EQ(assigned.channelFilter, &external);
    EXPECT_FALSE(MeshOptions().setChannelFilter("a\\"));
}

TEST(Options, GeoOptionsReadAndStoreMeshAndCurveKeysInOneItem) {
    GeoOptions geo;
    ASSERT_TRUE(geo.parse(portMetadata(
        options({{"paths", "n1"}, {"pointNormals", "true"}, {"sampling", "byCVCount"}}))));
    EXPECT_EQ(geo.paths, (Orsel::Array<Orsel::String>{"n1"}));
    EXPECT_EQ(geo.mesh.paths, geo.paths);
    EXPECT_TRUE(geo.mesh.pointNormals);
    EXPECT_EQ(geo.curve.sampling, CurveSampling::ByCVCount);

    ASSERT_TRUE(geo.mesh.setChannelFilter("uv*"));
    MetadataItem stored;
    geo.storeAttributes(stored);
    geo.storeAttributes(stored);
    EXPECT_EQ(stored.children().size(), 2u + 5u + 9u) << "storing again replaces the values";
    GeoOptions reread;
    ASSERT_TRUE(reread.parse(stored));
    EXPECT_TRUE(reread.mesh.pointNormals);
    EXPECT_EQ(reread.mesh.channelFilterExpression(), "uv*");
    EXPECT_EQ(reread.curve.sampling, CurveSampling::ByCVCount);
    EXPECT_EQ(reread.curve.paths, geo.paths);
}

} // namespace
