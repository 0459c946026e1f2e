#include <kova/KFnPlugin.h>
#include <kova/KGlobal.h>
#include <kova/KPluginLoader.h>
#include <zelvane/executor/TranslationLibrary.h>

namespace ZelvaneGraph::Executor {

TranslationLibrary::TranslationLibrary(KObject plugin, CreateZelvaneTypeTranslationFn factory)
    : plugin_(std::move(plugin)), factory_(factory) {}

std::unique_ptr<TranslationLibrary> TranslationLibrary::load(const KString& path, KStatus* status) {
    KStatus loadStatus;
    const KObject plugin = KPluginLoader::load(path, &loadStatus);
    if (plugin.isNull()) {
        if (status) {
            *status = loadStatus ? KStatus(KStatus::kFailure) : loadStatus;
        }
        return nullptr;
    }
    return fromHostPlugin(plugin, status);
}

std::unique_ptr<TranslationLibrary> TranslationLibrary::fromHostPlugin(const KObject& plugin,
                                                                       KStatus* status) {
    const auto factory = reinterpret_cast<CreateZelvaneTypeTranslationFn>(
        KPluginLoader::symbol(plugin, kCreateZelvaneTypeTranslationSymbol));
    if (!factory) {
        KGlobal::displayError("Plug-in '" + KFnPlugin(plugin).loadPath() +
                              "' is not a translation library: it exports no " +
                              kCreateZelvaneTypeTranslationSymbol);
        if (status) {
            *status = KStatus::kFailure;
        }
        return nullptr;
    }
    if (status) {
        *status = KStatus::kSuccess;
    }
    return std::unique_ptr<TranslationLibrary>(new TranslationLibrary(plugin, factory));
}

TranslationPtr TranslationLibrary::createTranslation() const {
    return TranslationPtr(factory_());
}

} // namespace ZelvaneGraph::Executor
