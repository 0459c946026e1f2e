#include <algorithm>
#include <board/TranslationBinding.h>
#include <kova/KGlobal.h>
#include <kova/KPluginLoader.h>
#include <kova/detail/Guarded.h>
#include <utility>

namespace ZelvaneBoard {

using ZelvaneGraph::Executor::TranslationLibrary;
using ZelvaneGraph::Executor::TranslationPtr;

namespace {

// Runs `operation` of the library at `libraryPath` at the host boundary: an exception does not
// escape, it is reported ("Translation library 'PATH' in OPERATION threw: ...") and the call
// counts as failed.
template <class Call>
bool guarded(const KString& libraryPath, const char* operation, Call&& call) {
    return kova::detail::runGuarded(std::forward<Call>(call), [&] {
        return "Translation library '" + libraryPath + "' in " + KString(operation);
    });
}

// Gives the translation object back to its library, outside unique_ptr (whose reset must
// not throw), so that a release that throws is reported too.
void release(const KString& libraryPath, TranslationPtr& translation) {
    ZelvaneGraph::Executor::TypeTranslation* object = translation.release();
    if (object) {
        guarded(libraryPath, "release", [object] { object->release(); });
    }
}

} // namespace

TranslationBinding::TranslationBinding(KString libraryPath,
                                       std::unique_ptr<TranslationLibrary> library,
                                       TranslationPtr translation,
                                       Orsel::Array<Orsel::String> supportedTypeNames)
    : libraryPath_(std::move(libraryPath)), library_(std::move(library)),
      translation_(std::move(translation)), supportedTypeNames_(std::move(supportedTypeNames)) {}

std::unique_ptr<TranslationBinding> TranslationBinding::bind(const KString& libraryPath) {
    std::unique_ptr<TranslationLibrary> library = TranslationLibrary::load(libraryPath);
    if (!library) {
        return nullptr;
    }
    const KObject plugin = library->hostPlugin();
    TranslationPtr translation;
    if (!guarded(libraryPath, "createZelvaneTypeTranslation",
                 [&] { translation = library->createTranslation(); })) {
        KPluginLoader::unload(plugin);
        return nullptr;
    }
    if (!translation) {
        KGlobal::displayError("Translation library '" + libraryPath +
                              "' could not create its translation object");
        KPluginLoader::unload(plugin);
        return nullptr;
    }
    Orsel::Array<Orsel::String> supportedTypeNames;
    bool registered = false;
    const bool called = guarded(libraryPath, "getSupportedTypeNames",
                                [&] { translation->getSupportedTypeNames(supportedTypeNames); }) &&
                        guarded(libraryPath, "registerHostPlugins",
                                [&] { registered = translation->registerHostPlugins(plugin); });
    if (!called || !registered) {
        if (called) {
            KGlobal::displayError("Translation library '" + libraryPath +
                                  "' could not register its host plug-ins");
        }
        release(libraryPath, translation);
        KPluginLoader::unload(plugin); // also drops what a failed registration left behind
        return nullptr;
    }
    return std::unique_ptr<TranslationBinding>(new TranslationBinding(
        libraryPath, std::move(library), std::move(translation), std::move(supportedTypeNames)));
}

TranslationBinding::~TranslationBinding() {
    const KObject plugin = library_->hostPlugin();
    bool deregistered = false;
    if (guarded(libraryPath_, "deregisterHostPlugins",
                [&] { deregistered = translation_->deregisterHostPlugins(plugin); }) &&
        !deregistered) {
        KGlobal::displayWarning("Translation library '" + libraryPath_ +
                                "' could not deregister its host plug-ins");
    }
    release(libraryPath_, translation_);
    KPluginLoader::unload(plugin);
}

bool TranslationBinding::supports(const Orsel::Type& type) const {
    const Orsel::Type& named = type.isArray() ? type.elementType() : type;
    const Orsel::String name = named.fullyQualifiedName();
    return std::find(supportedTypeNames_.begin(), supportedTypeNames_.end(), name) !=
           supportedTypeNames_.end();
}

} // namespace ZelvaneBoard
