#pragma once

#include <board/BoardExport.h>
#include <memory>
#include <orsel/Array.h>
#include <orsel/String.h>
#include <orsel/Type.h>
#include <zelvane/executor/TranslationLibrary.h>

namespace ZelvaneBoard {

// A translation library bound to the host: loaded through the host's and the executor's
// loaders, its translation object created and its host plug-ins registered. Destroying the
// binding deregisters the host plug-ins, releases the translation object and unloads the
// library, in that order. An exception thrown by any of the library's operations on the way
// in or out is reported through the host's messages and never escapes: binding then fails,
// unbinding goes on.
class BOARD_API TranslationBinding {
public:
    // Null (with the reason reported through the host's messages) when the library can't be
    // loaded, has no factory, the factory fails or the host plug-ins can't be registered.
    static std::unique_ptr<TranslationBinding> bind(const KString& libraryPath);
    ~TranslationBinding();

    TranslationBinding(const TranslationBinding&) = delete;
    TranslationBinding& operator=(const TranslationBinding&) = delete;

    const KString& libraryPath() const { return libraryPath_; }
    const KObject& hostPlugin() const { return library_->hostPlugin(); }
    ZelvaneGraph::Executor::TypeTranslation& translation() const { return *translation_; }

    // Whether the translation lists `type` (or, for an array, its element type).
    bool supports(const Orsel::Type& type) const;

private:
    TranslationBinding(KString libraryPath,
                       std::unique_ptr<ZelvaneGraph::Executor::TranslationLibrary> library,
                       ZelvaneGraph::Executor::TranslationPtr translation,
                       Orsel::Array<Orsel::String> supportedTypeNames);

    KString libraryPath_;
    std::unique_ptr<ZelvaneGraph::Executor::TranslationLibrary> library_;
    ZelvaneGraph::Executor::TranslationPtr translation_;
    Orsel::Array<Orsel::String> supportedTypeNames_;
};

} // namespace ZelvaneBoard
