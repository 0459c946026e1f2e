#pragma once

#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <memory>
#include <zelvane/executor/ExecutorExport.h>
#include <zelvane/executor/TypeTranslation.h>

namespace ZelvaneGraph::Executor {

// Gives a translation object back to the library that made it.
struct ReleaseTranslation {
    void operator()(TypeTranslation* translation) const {
        if (translation) {
            translation->release();
        }
    }
};
using TranslationPtr = std::unique_ptr<TypeTranslation, ReleaseTranslation>;

// The executor's loader of translation libraries. A library is always loaded through the
// host's plug-in loader first (which checks its API version and signature and refuses it
// otherwise); the executor then looks up its exported factory.
class ZELVANE_EXECUTOR_API TranslationLibrary {
public:
    // Loads `path` through the host and finds its factory. On failure returns null, sets
    // `status` and reports the reason through the host's messages.
    static std::unique_ptr<TranslationLibrary> load(const KString& path, KStatus* status = nullptr);
    // Uses a library the host has already loaded.
    static std::unique_ptr<TranslationLibrary> fromHostPlugin(const KObject& plugin,
                                                              KStatus* status = nullptr);

    const KObject& hostPlugin() const { return plugin_; }

    // A new translation object from the library's factory; null when the factory fails.
    TranslationPtr createTranslation() const;

private:
    TranslationLibrary(KObject plugin, CreateZelvaneTypeTranslationFn factory);

    KObject plugin_;
    CreateZelvaneTypeTranslationFn factory_;
};

} // namespace ZelvaneGraph::Executor
