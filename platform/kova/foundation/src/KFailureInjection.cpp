#include <atomic>
#include <charconv>
#include <kova/KFailureInjection.h>
#include <kova/KString.h>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace {

struct Rule {
    enum Mode { kNext, kAlways, kAfter } mode = kNext;
    int remaining = 0;  // kNext: failures left; kAfter: successes left before the failure
    bool spent = false; // kAfter: the failure has happened
};

struct State {
    std::mutex mutex;
    std::map<std::string, Rule, std::less<>> rules;
    std::map<std::string, int64_t, std::less<>> counts;
    bool counting = false;
};

// True from the first arming (or counting) until reset: the only thing a disarmed check reads.
std::atomic<bool> engaged{false};

State& state() {
    static State* instance = new State; // host operations may run during static destruction
    return *instance;
}

void arm(std::string_view operation, Rule rule) {
    State& s = state();
    std::lock_guard lock(s.mutex);
    s.rules.insert_or_assign(std::string(operation), rule);
    engaged.store(true, std::memory_order_relaxed);
}

// Decides one call of an armed rule.
bool fire(Rule& rule) {
    switch (rule.mode) {
    case Rule::kAlways:
        return true;
    case Rule::kNext:
        if (rule.remaining > 0) {
            --rule.remaining;
            return true;
        }
        return false;
    case Rule::kAfter:
        if (rule.spent) {
            return false;
        }
        if (rule.remaining > 0) {
            --rule.remaining;
            return false;
        }
        rule.spent = true;
        return true;
    }
    return false;
}

bool parseCount(std::string_view text, int& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && value >= 0;
}

bool parseTerm(std::string_view term, std::string& operation, Rule& rule) {
    const std::size_t colon = term.find("::");
    const std::size_t modeAt = term.find(':', colon == std::string_view::npos ? 0 : colon + 2);
    operation = std::string(term.substr(0, modeAt));
    if (operation.empty()) {
        return false;
    }
    rule = Rule{Rule::kNext, 1, false};
    if (modeAt == std::string_view::npos) {
        return true;
    }
    const std::string_view mode = term.substr(modeAt + 1);
    if (mode == "always") {
        rule.mode = Rule::kAlways;
        return true;
    }
    if (mode.starts_with("next=")) {
        return parseCount(mode.substr(5), rule.remaining);
    }
    if (mode.starts_with("after=")) {
        rule.mode = Rule::kAfter;
        return parseCount(mode.substr(6), rule.remaining);
    }
    return false;
}

std::string_view trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

} // namespace

void KFailureInjection::failNext(std::string_view operation, int times) {
    arm(operation, Rule{Rule::kNext, times > 0 ? times : 0, false});
}

void KFailureInjection::failAlways(std::string_view operation) {
    arm(operation, Rule{Rule::kAlways, 0, false});
}

void KFailureInjection::failAfter(std::string_view operation, int successes) {
    arm(operation, Rule{Rule::kAfter, successes > 0 ? successes : 0, false});
}

void KFailureInjection::setCounting(bool counting) {
    State& s = state();
    std::lock_guard lock(s.mutex);
    s.counting = counting;
    if (counting) {
        engaged.store(true, std::memory_order_relaxed);
    }
}

KStatus KFailureInjection::configure(std::string_view description) {
    std::vector<std::pair<std::string, Rule>> parsed;
    while (!description.empty()) {
        const std::size_t comma = description.find(',');
        const std::string_view term = trim(description.substr(0, comma));
        description =
            comma == std::string_view::npos ? std::string_view() : description.substr(comma + 1);
        std::string operation;
        Rule rule;
        if (!parseTerm(term, operation, rule)) {
            return KStatus(
                KStatus::kInvalidParameter,
                KString("malformed failure injection term \"" + std::string(term) + "\""));
        }
        parsed.emplace_back(std::move(operation), rule);
    }
    for (const auto& [operation, rule] : parsed) {
        arm(operation, rule);
    }
    return KStatus();
}

void KFailureInjection::reset() {
    State& s = state();
    std::lock_guard lock(s.mutex);
    s.rules.clear();
    s.counts.clear();
    s.counting = false;
    engaged.store(false, std::memory_order_relaxed);
}

int64_t KFailureInjection::callCount(std::string_view operation) {
    State& s = state();
    std::lock_guard lock(s.mutex);
    const auto found = s.counts.find(operation);
    return found == s.counts.end() ? 0 : found->second;
}

bool KFailureInjection::shouldFail(const char* operation) {
    if (!engaged.load(std::memory_order_relaxed) || operation == nullptr) {
        return false;
    }
    const std::string_view name(operation);
    State& s = state();
    std::lock_guard lock(s.mutex);
    if (auto count = s.counts.find(name); count != s.counts.end()) {
        ++count->second;
    } else {
        s.counts.emplace(name, 1);
    }
    const auto rule = s.rules.find(name);
    return rule != s.rules.end() && fire(rule->second);
}

KStatus KFailureInjection::failure(std::string_view operation) {
    return KStatus(KStatus::kFailure, KString("injected failure: " + std::string(operation)));
}
