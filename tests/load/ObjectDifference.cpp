#include "ObjectDifference.h"

#include <cstring>
#include <type_traits>
#include <variant>

namespace {

using Zelvane::PropertyValue;

std::string difference(const Orsel::Ptr<Zelvane::Object>& expected,
                       const Orsel::Ptr<Zelvane::Object>& actual, const std::string& path) {
    if (!expected || !actual) {
        return static_cast<bool>(expected) == static_cast<bool>(actual)
                   ? std::string()
                   : path + ": one object is null";
    }
    return objectDifference(*expected, *actual, path);
}

template <class List>
std::string listDifference(const List& expected, const List& actual, const std::string& path);

// Numbers and vectors compare bit by bit, so that -0 and 0 differ as they would in a file.
template <class T>
std::string difference(const T& expected, const T& actual, const std::string& path) {
    bool same = false;
    if constexpr (std::is_trivially_copyable_v<T> && !std::is_same_v<T, bool>) {
        same = std::memcmp(&expected, &actual, sizeof(T)) == 0;
    } else {
        same = expected == actual;
    }
    return same ? std::string() : path + ": differs";
}

template <class T>
std::string difference(const Orsel::Ptr<Orsel::Array<T>>& expected,
                       const Orsel::Ptr<Orsel::Array<T>>& actual, const std::string& path) {
    if (!expected || !actual) {
        return static_cast<bool>(expected) == static_cast<bool>(actual)
                   ? std::string()
                   : path + ": one array is null";
    }
    return listDifference(*expected, *actual, path);
}

template <class List>
std::string listDifference(const List& expected, const List& actual, const std::string& path) {
    if (expected.size() != actual.size()) {
        return path + ": " + std::to_string(actual.size()) + " elements instead of " +
               std::to_string(expected.size());
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        std::string found =
            difference(expected[i], actual[i], path + "[" + std::to_string(i) + "]");
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

std::string valueDifference(const PropertyValue& expected, const PropertyValue& actual,
                            const std::string& path) {
    if (expected.index() != actual.index()) {
        return path + ": holds another type";
    }
    return std::visit(
        [&](const auto& value) {
            return difference(value, std::get<std::decay_t<decltype(value)>>(actual), path);
        },
        expected);
}

} // namespace

std::string objectDifference(const Zelvane::Object& expected, const Zelvane::Object& actual,
                             const std::string& path) {
    const Orsel::Array<Orsel::String> expectedNames = expected.propertyNames();
    const Orsel::Array<Orsel::String> actualNames = actual.propertyNames();
    if (expectedNames != actualNames) {
        return (path.empty() ? std::string("the object") : path) + ": other property names";
    }
    for (const Orsel::String& name : expectedNames) {
        const std::string where =
            path.empty() ? name.toStdString() : path + "." + name.toStdString();
        std::string found = valueDifference(*expected.find(name), *actual.find(name), where);
        if (!found.empty()) {
            return found;
        }
    }
    return {};
}

std::string objectsDifference(const std::vector<Orsel::Ptr<Zelvane::Object>>& expected,
                              const std::vector<Orsel::Ptr<Zelvane::Object>>& actual,
                              const std::string& path) {
    return listDifference(expected, actual, path);
}
