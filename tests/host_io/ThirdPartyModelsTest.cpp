#include "IoTestSupport.h"

#include <assimp/Importer.hpp>
#include <kova_io/FileFormats.h>
#include <kova_io/SceneImport.h>

using namespace KovaIo;

namespace {

namespace fs = std::filesystem;

// Models of the common formats, small enough to keep the suite quick.
std::vector<fs::path> models(const char* folder) {
    std::vector<fs::path> found;
    const fs::path root = fs::path(ASSIMP_MODELS_DIR) / folder;
    if (!fs::exists(root)) {
        return found;
    }
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string ext = entry.path().extension().string();
        FileFormat format;
        if (entry.is_regular_file() && entry.file_size() < 3'000'000 &&
            importFormatOf(entry.path().string(), format)) {
            found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

class ThirdPartyModels : public IoTest {
protected:
    void SetUp() override {
        if (!fs::exists(ASSIMP_MODELS_DIR)) {
            GTEST_SKIP() << "assimp-testmodels is not installed";
        }
        IoTest::SetUp();
    }
};

TEST_F(ThirdPartyModels, EveryFiniteModelAssimpAcceptsImportsWithItsFaces) {
    int imported = 0;
    for (const char* folder : {"PLY", "STL", "glTF2", "Collada", "OFF", "3DS", "FBX"}) {
        for (const fs::path& path : models(folder)) {
            Assimp::Importer reference;
            const aiScene* accepted = reference.ReadFile(path.string(), 0);
            const ImportResult result = importScene(path.string());
            if (accepted == nullptr) {
                EXPECT_FALSE(result.status) << path;
            } else if (!result.status &&
                       failureText(result.status).find("is not a finite number") !=
                           std::string::npos) {
                // Assimp reads infinities and NaNs; the host makes no geometry of them.
                EXPECT_NE(path.string().find("Infinites"), std::string::npos) << path;
            } else {
                EXPECT_TRUE(result.status) << path << ": " << failureText(result.status);
                ++imported;
            }
            KScene::reset();
        }
    }
    EXPECT_GT(imported, 40);
}

TEST_F(ThirdPartyModels, ObjModelsImportOrFailWithOneLine) {
    int imported = 0;
    for (const fs::path& path : models("OBJ")) {
        const ImportResult result = importScene(path.string());
        if (result.status) {
            ++imported;
        } else {
            const std::string text = failureText(result.status);
            EXPECT_NE(text.find(path.string()), std::string::npos) << text;
            EXPECT_EQ(text.find('\n'), std::string::npos) << text;
        }
        KScene::reset();
    }
    EXPECT_GE(imported, 20);
    // The spider names its parts with `g`: one mesh, its parts as face sets.
    const ImportResult spider =
        importScene((fs::path(ASSIMP_MODELS_DIR) / "OBJ/spider.obj").string());
    ASSERT_TRUE(spider.status) << failureText(spider.status);
    EXPECT_EQ(spider.nodes.meshShapes.size(), 1u);
    EXPECT_GT(spider.nodes.faceSets.size(), 5u);
    EXPECT_GT(spider.nodes.shadingGroups.size(), 3u);
}

} // namespace
