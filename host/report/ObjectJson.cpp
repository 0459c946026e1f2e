#include "ObjectJson.h"

#include <fmt/format.h>
#include <type_traits>
#include <zelvane/geometry/Names.h>

namespace KovaHost {
namespace {

using Zelvane::Math::float2;
using Zelvane::Math::float3;
using Zelvane::Math::float4;
using Zelvane::Math::float4x4;

constexpr std::size_t kOutlineValues = 4;

nlohmann::json scalarJson(const float2& v) {
    return {v.x, v.y};
}
nlohmann::json scalarJson(const float3& v) {
    return {v.x, v.y, v.z};
}
nlohmann::json scalarJson(const float4& v) {
    return {v.x, v.y, v.z, v.w};
}
nlohmann::json scalarJson(const float4x4& m) {
    nlohmann::json values = nlohmann::json::array();
    for (const auto& row : m.m) {
        for (float value : row) {
            values.push_back(value);
        }
    }
    return values;
}
nlohmann::json scalarJson(const Orsel::String& s) {
    return s.toStdString();
}
template <class T>
requires std::is_arithmetic_v<T> nlohmann::json scalarJson(T value) {
    return value;
}

// The component a geometry property runs over, or null.
nlohmann::json targetOf(const Zelvane::PropertyValue& value) {
    if (const auto* nested = std::get_if<Orsel::Ptr<Zelvane::Object>>(&value)) {
        if (*nested) {
            if (const auto* target = (*nested)->get<Orsel::String>(Zelvane::Geometry::sTarget)) {
                return target->toStdString();
            }
        }
    }
    return nullptr;
}

nlohmann::json valuesJson(const Zelvane::PropertyValue& value, std::size_t limit, bool& truncated) {
    return std::visit(
        [&](const auto& held) -> nlohmann::json {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, Orsel::Ptr<Zelvane::Object>>) {
                return held ? objectToJson(*held, limit) : nlohmann::json(nullptr);
            } else if constexpr (std::is_same_v<
                                     Held, Orsel::Ptr<Orsel::Array<Orsel::Ptr<Zelvane::Object>>>>) {
                if (!held) {
                    return nullptr;
                }
                nlohmann::json list = nlohmann::json::array();
                for (std::size_t i = 0; i < held->size() && i < limit; ++i) {
                    const auto& entry = (*held)[i];
                    list.push_back(entry ? objectToJson(*entry, limit) : nlohmann::json(nullptr));
                }
                truncated = held->size() > limit;
                return list;
            } else if constexpr (requires { held->size(); }) {
                if (!held) {
                    return nullptr;
                }
                nlohmann::json list = nlohmann::json::array();
                for (std::size_t i = 0; i < held->size() && i < limit; ++i) {
                    list.push_back(scalarJson((*held)[i]));
                }
                truncated = held->size() > limit;
                return list;
            } else {
                return scalarJson(held);
            }
        },
        value);
}

} // namespace

nlohmann::json objectToJson(const Zelvane::Object& object, std::size_t valueLimit) {
    nlohmann::json properties = nlohmann::json::array();
    object.forEachProperty([&](const Orsel::String& name, const Zelvane::PropertyValue& value) {
        const Zelvane::PropertyInfo info = Zelvane::describeProperty(value);
        bool truncated = false;
        nlohmann::json entry{{"name", name.toStdString()},
                             {"type", info.type.fullyQualifiedName().toStdString()},
                             {"size", info.size},
                             {"target", targetOf(value)}};
        entry["values"] = valuesJson(value, valueLimit, truncated);
        if (truncated) {
            entry["truncated"] = true;
        }
        properties.push_back(std::move(entry));
    });
    return {{"properties", std::move(properties)}};
}

std::string objectOutline(const Zelvane::Object& object, int indent) {
    std::string text;
    object.forEachProperty([&](const Orsel::String& name, const Zelvane::PropertyValue& value) {
        const Zelvane::PropertyInfo info = Zelvane::describeProperty(value);
        const nlohmann::json target = targetOf(value);
        text += fmt::format("{:{}}{:<24} {:<16} {:>9}", "", indent, name.toStdString(),
                            info.type.fullyQualifiedName().toStdString(), info.size);
        if (!target.is_null()) {
            text += fmt::format("  over {}", target.get<std::string>());
        }
        if (const auto* nested = std::get_if<Orsel::Ptr<Zelvane::Object>>(&value)) {
            text += "\n";
            if (*nested) {
                text += objectOutline(**nested, indent + 2);
            }
            return;
        }
        bool truncated = false;
        const nlohmann::json values = valuesJson(value, kOutlineValues, truncated);
        std::string shown = values.dump();
        if (truncated && !shown.empty()) {
            shown.insert(shown.size() - 1, ", ...");
        }
        text += fmt::format("  {}\n", shown);
    });
    return text;
}

} // namespace KovaHost
