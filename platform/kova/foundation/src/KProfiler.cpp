#include <algorithm>
#include <atomic>
#include <chrono>
#include <kova/KProfiler.h>
#include <kova/KProfilingScope.h>
#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <ostream>
#include <tuple>
#include <unistd.h>

namespace {

struct Category {
    std::string name;
    std::string description;
};

// A fixed block of events; blocks never move, so a reader can walk them while the owning
// thread appends to the last one.
struct Block {
    static constexpr std::size_t kSize = 1024;
    KProfiler::Event events[kSize];
    std::atomic<Block*> next{nullptr};
};

// The events of one thread. Only the owning thread appends, without a lock: it fills the next
// slot and publishes it by raising `published` with release order. Readers take the registry
// mutex and read the first `published` events. Dropping recorded events after clear() is done
// by the owner itself at its next append, under the registry mutex, so that no reader is
// walking the blocks meanwhile.
struct ThreadBuffer {
    explicit ThreadBuffer(uint32_t id) : threadId(id) {}
    ~ThreadBuffer() {
        for (Block* b = head.next.load(std::memory_order_relaxed); b != nullptr;) {
            Block* next = b->next.load(std::memory_order_relaxed);
            delete b;
            b = next;
        }
    }

    const uint32_t threadId;
    Block head;
    std::atomic<std::size_t> published{0};
    std::atomic<bool> resetRequested{false};
    std::atomic<bool> threadEnded{false};
    Block* tail = &head; // owner only
};

struct Registry {
    std::mutex mutex;
    std::vector<Category> categories;
    std::vector<std::shared_ptr<ThreadBuffer>> buffers;
    uint32_t nextThreadId = 1;
    const std::chrono::steady_clock::time_point epoch = std::chrono::steady_clock::now();
};

Registry& registry() {
    static Registry* instance = new Registry; // scopes may close during static destruction
    return *instance;
}

std::atomic<bool> recording{false};
thread_local int openScopes = 0; // recording scopes open on this thread

int64_t nowNs() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() -
                                                                registry().epoch)
        .count();
}

// Marks this thread's buffer as ended when the thread exits, so clear() may drop it.
struct ThreadHandle {
    std::shared_ptr<ThreadBuffer> buffer;
    ~ThreadHandle() {
        if (buffer) {
            buffer->threadEnded.store(true, std::memory_order_release);
        }
    }
};

ThreadBuffer& threadBuffer() {
    thread_local ThreadHandle handle;
    if (!handle.buffer) {
        Registry& r = registry();
        std::lock_guard lock(r.mutex);
        handle.buffer = std::make_shared<ThreadBuffer>(r.nextThreadId++);
        r.buffers.push_back(handle.buffer);
    }
    return *handle.buffer;
}

// Drops this thread's events when clear() has asked for it.
void resetIfRequested(ThreadBuffer& buffer) {
    if (!buffer.resetRequested.load(std::memory_order_acquire)) {
        return;
    }
    std::lock_guard lock(registry().mutex);
    std::size_t left = buffer.published.load(std::memory_order_relaxed);
    for (Block* b = &buffer.head; b != nullptr && left > 0;
         b = b->next.load(std::memory_order_relaxed)) {
        const std::size_t n = std::min(left, Block::kSize);
        std::fill_n(b->events, n, KProfiler::Event()); // releases the label copies
        left -= n;
    }
    buffer.tail = &buffer.head;
    buffer.published.store(0, std::memory_order_relaxed);
    buffer.resetRequested.store(false, std::memory_order_relaxed);
}

void append(KProfiler::Event&& event) {
    ThreadBuffer& buffer = threadBuffer();
    resetIfRequested(buffer);
    const std::size_t index = buffer.published.load(std::memory_order_relaxed);
    if (index > 0 && index % Block::kSize == 0) {
        Block* next = buffer.tail->next.load(std::memory_order_relaxed);
        if (next == nullptr) {
            next = new Block;
            buffer.tail->next.store(next, std::memory_order_release);
        }
        buffer.tail = next;
    }
    event.threadId = buffer.threadId;
    buffer.tail->events[index % Block::kSize] = std::move(event);
    buffer.published.store(index + 1, std::memory_order_release);
}

} // namespace

int KProfiler::addCategory(const char* name, const char* description) {
    if (name == nullptr || *name == '\0') {
        return -1;
    }
    Registry& r = registry();
    std::lock_guard lock(r.mutex);
    const auto found = std::find_if(r.categories.begin(), r.categories.end(),
                                    [name](const Category& c) { return c.name == name; });
    if (found != r.categories.end()) {
        return static_cast<int>(found - r.categories.begin());
    }
    r.categories.push_back({name, description ? description : ""});
    return static_cast<int>(r.categories.size() - 1);
}

KString KProfiler::categoryName(int category) {
    Registry& r = registry();
    std::lock_guard lock(r.mutex);
    return category >= 0 && category < static_cast<int>(r.categories.size())
               ? KString(r.categories[category].name)
               : KString();
}

KString KProfiler::categoryDescription(int category) {
    Registry& r = registry();
    std::lock_guard lock(r.mutex);
    return category >= 0 && category < static_cast<int>(r.categories.size())
               ? KString(r.categories[category].description)
               : KString();
}

int KProfiler::categoryCount() {
    Registry& r = registry();
    std::lock_guard lock(r.mutex);
    return static_cast<int>(r.categories.size());
}

void KProfiler::setRecording(bool on) {
    recording.store(on, std::memory_order_relaxed);
}

bool KProfiler::isRecording() {
    return recording.load(std::memory_order_relaxed);
}

std::vector<KProfiler::Event> KProfiler::events() {
    std::vector<Event> all;
    Registry& r = registry();
    {
        std::lock_guard lock(r.mutex);
        for (const auto& buffer : r.buffers) {
            if (buffer->resetRequested.load(std::memory_order_relaxed)) {
                continue; // cleared; its owner has not dropped the events yet
            }
            std::size_t left = buffer->published.load(std::memory_order_acquire);
            for (const Block* b = &buffer->head; b != nullptr && left > 0;
                 b = b->next.load(std::memory_order_acquire)) {
                const std::size_t n = std::min(left, Block::kSize);
                all.insert(all.end(), b->events, b->events + n);
                left -= n;
            }
        }
    }
    std::sort(all.begin(), all.end(), [](const Event& a, const Event& b) {
        return std::tie(a.threadId, a.startNs, a.depth) < std::tie(b.threadId, b.startNs, b.depth);
    });
    return all;
}

void KProfiler::clear() {
    Registry& r = registry();
    std::lock_guard lock(r.mutex);
    std::erase_if(r.buffers, [](const std::shared_ptr<ThreadBuffer>& buffer) {
        return buffer->threadEnded.load(std::memory_order_acquire);
    });
    for (const auto& buffer : r.buffers) {
        buffer->resetRequested.store(true, std::memory_order_release);
    }
}

bool KProfiler::writeChromeTrace(std::ostream& out) {
    const std::vector<Event> recorded = events();
    nlohmann::json list = nlohmann::json::array();
    const int pid = static_cast<int>(::getpid());
    for (const Event& e : recorded) {
        nlohmann::json args = {{"colorIndex", e.colorIndex}};
        if (!e.description.empty()) {
            args["description"] = e.description;
        }
        list.push_back({{"name", e.label},
                        {"cat", categoryName(e.category).str()},
                        {"ph", "X"},
                        {"ts", static_cast<double>(e.startNs) / 1000.0},
                        {"dur", static_cast<double>(e.durationNs) / 1000.0},
                        {"pid", pid},
                        {"tid", e.threadId},
                        {"args", std::move(args)}});
    }
    const nlohmann::json trace = {{"traceEvents", std::move(list)}, {"displayTimeUnit", "ns"}};
    out << trace.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    return static_cast<bool>(out);
}

KProfilingScope::KProfilingScope(int category, int colorIndex, const char* label,
                                 const char* description) {
    if (!recording.load(std::memory_order_relaxed)) {
        return;
    }
    label_ = label;
    description_ = description;
    category_ = category;
    colorIndex_ = colorIndex;
    depth_ = openScopes++;
    active_ = true;
    startNs_ = nowNs();
}

KProfilingScope::~KProfilingScope() {
    if (!active_) {
        return;
    }
    KProfiler::Event event;
    event.durationNs = nowNs() - startNs_;
    --openScopes;
    event.category = category_;
    event.colorIndex = colorIndex_;
    event.label = label_ ? label_ : "";
    event.description = description_ ? description_ : "";
    event.startNs = startNs_;
    event.depth = depth_;
    append(std::move(event));
}
