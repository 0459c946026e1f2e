#include <algorithm>
#include <board/TranslationBinding.h>
#include <kova/KGlobal.h>
#include <kova/KPluginLoader.h>

namespace ZelvaneBoard {

using ZelvaneGraph::Executor::TranslationLibrary;
using ZelvaneGraph::Executor::TranslationPtr;

TranslationBinding::TranslationBinding(KString libraryPath,
                                       std::unique_ptr<TranslationLibrary> library,
                                       TranslationPtr translation)
    : libraryPath_(std::move(libraryPath)), library_(std::move(library)),
      translation_(std::move(translation)) {
    translation_->getSupportedTypeNames(supportedTypeNames_);
}

std::unique_ptr<TranslationBinding> TranslationBinding::bind(const KString& libraryPath) {
    std::unique_ptr<TranslationLibrary> library = TranslationLibrary::load(libraryPath);
    if (!library) {
        return nullptr;
    }
    const KObject plugin = library->hostPlugin();
    TranslationPtr translation = library->createTranslation();
    if (!translation) {
        KGlobal::displayError("Translation library '" + libraryPath +
                              "' could not create its translation object");
        KPluginLoader::unload(plugin);
        return nullptr;
    }
    if (!translation->registerHostPlugins(plugin)) {
        KGlobal::displayError("Translation library '" + libraryPath +
                              "' could not register its host plug-ins");
        translation.reset();
        KPluginLoader::unload(plugin);
        return nullptr;
    }
    return std::unique_ptr<TranslationBinding>(
        new TranslationBinding(libraryPath, std::move(library), std::move(translation)));
}

TranslationBinding::~TranslationBinding() {
    const KObject plugin = library_->hostPlugin();
    if (!translation_->deregisterHostPlugins(plugin)) {
        KGlobal::displayWarning("Translation library '" + libraryPath_ +
                                "' could not deregister its host plug-ins");
    }
    translation_.reset();
    KPluginLoader::unload(plugin);
}

bool TranslationBinding::supports(const Orsel::Type& type) const {
    const Orsel::Type& named = type.isArray() ? type.elementType() : type;
    const Orsel::String name = named.fullyQualifiedName();
    return std::find(supportedTypeNames_.begin(), supportedTypeNames_.end(), name) !=
           supportedTypeNames_.end();
}

} // namespace ZelvaneBoard
