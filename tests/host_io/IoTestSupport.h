#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <kova/KScene.h>
#include <kova/KString.h>
#include <kova_io/FileText.h>
#include <kova_io/ObjReader.h>
#include <string>

// A fresh host scene and a scratch folder per test.
class IoTest : public ::testing::Test {
protected:
    void SetUp() override {
        KScene::reset();
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        dir = std::filesystem::temp_directory_path() /
              (std::string("kova_io_") + info->test_suite_name() + "_" + info->name());
        std::filesystem::remove_all(dir);
        std::filesystem::create_directories(dir);
    }
    void TearDown() override {
        KScene::reset();
        std::filesystem::remove_all(dir);
    }
    // Writes `bytes` to a scratch file and returns its path.
    std::string file(const std::string& name, const std::string& bytes) const {
        const std::string path = (dir / name).string();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    static std::string dataFile(const char* name) {
        return std::string(KOVA_DATA_DIR) + "/" + name;
    }
    static std::string read(const std::string& path) {
        std::string bytes;
        EXPECT_TRUE(KovaIo::readFileBytes(path, bytes)) << path;
        return bytes;
    }
    std::filesystem::path dir;
};

inline KovaIo::SceneData parseObj(const std::string& text, const std::string& name = "obj") {
    KovaIo::SceneData scene;
    const KStatus status = KovaIo::readObj(text, name, scene);
    EXPECT_TRUE(status) << status.errorString();
    return scene;
}

inline std::string failureText(const KStatus& status) {
    return status ? std::string() : status.errorString().str();
}
