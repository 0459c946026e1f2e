#include <algorithm>
#include <board/BoardExecutor.h>
#include <kova/KGlobal.h>
#include <memory>
#include <mutex>

namespace ZelvaneBoard {
namespace {

struct Bindings {
    std::mutex mutex;
    std::vector<std::unique_ptr<TranslationBinding>> list;
};

Bindings& bindings() {
    static Bindings* instance = new Bindings(); // outlives every static destructor
    return *instance;
}

} // namespace

KStatus BoardExecutor::bind(const KString& libraryPath) {
    Bindings& all = bindings();
    std::lock_guard lock(all.mutex);
    const bool alreadyBound =
        std::any_of(all.list.begin(), all.list.end(),
                    [&](const auto& binding) { return binding->libraryPath() == libraryPath; });
    if (alreadyBound) {
        KGlobal::displayError("Translation library '" + libraryPath + "' is already bound");
        return KStatus(KStatus::kInvalidParameter, "already bound");
    }
    std::unique_ptr<TranslationBinding> binding = TranslationBinding::bind(libraryPath);
    if (!binding) {
        return KStatus::kFailure;
    }
    all.list.push_back(std::move(binding));
    return KStatus::kSuccess;
}

KStatus BoardExecutor::unbind(const KString& libraryPath) {
    std::unique_ptr<TranslationBinding> released;
    {
        Bindings& all = bindings();
        std::lock_guard lock(all.mutex);
        auto it = std::find_if(all.list.begin(), all.list.end(), [&](const auto& binding) {
            return binding->libraryPath() == libraryPath;
        });
        if (it == all.list.end()) {
            return KStatus(KStatus::kNotFound, "not bound");
        }
        released = std::move(*it);
        all.list.erase(it);
    }
    return KStatus::kSuccess; // `released` unbinds on the way out, outside the lock
}

void BoardExecutor::unbindAll() {
    std::vector<std::unique_ptr<TranslationBinding>> released;
    {
        Bindings& all = bindings();
        std::lock_guard lock(all.mutex);
        released.swap(all.list);
    }
    // Unbind in the reverse order of binding.
    while (!released.empty()) {
        released.pop_back();
    }
}

std::vector<KString> BoardExecutor::boundLibraries() {
    Bindings& all = bindings();
    std::lock_guard lock(all.mutex);
    std::vector<KString> paths;
    for (const auto& binding : all.list) {
        paths.push_back(binding->libraryPath());
    }
    return paths;
}

ZelvaneGraph::Executor::TypeTranslation* BoardExecutor::translationFor(const Orsel::Type& type) {
    Bindings& all = bindings();
    std::lock_guard lock(all.mutex);
    for (const auto& binding : all.list) {
        if (binding->supports(type)) {
            return &binding->translation();
        }
    }
    return nullptr;
}

} // namespace ZelvaneBoard
