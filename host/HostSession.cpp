#include "HostSession.h"

#include <board/BoardExecutor.h>
#include <board/BoardNode.h>
#include <filesystem>
#include <kova/KPluginLoader.h>
#include <kova/KScene.h>

namespace KovaHost {

HostSession::HostSession() {
    KScene::reset();
    boardModule_ = KPluginLoader::registerModule("zelvaneBoard");
    ZelvaneBoard::registerBoardTypes(boardModule_);
}

HostSession::~HostSession() {
    KScene::reset();
    ZelvaneBoard::BoardExecutor::unbindAll();
    ZelvaneBoard::deregisterBoardTypes(boardModule_);
    KPluginLoader::unload(boardModule_);
}

bool HostSession::bindTranslationLibrary(const KString& path) {
    return static_cast<bool>(ZelvaneBoard::BoardExecutor::bind(path));
}

std::string defaultPluginPath() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return "zelvaneObjectTranslator.so";
    }
    return (self.parent_path().parent_path() / "lib" / "zelvaneObjectTranslator.so").string();
}

} // namespace KovaHost
