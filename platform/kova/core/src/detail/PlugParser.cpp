#include "detail/PlugParser.h"

#include "detail/Attribute.h"
#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/Scene.h"

#include <charconv>

namespace kova::detail {

namespace {

KStatus bad(std::string_view text, const char* why) {
    return KStatus(KStatus::kInvalidParameter,
                   KString("'" + std::string(text) + "' is not a plug: " + why));
}

// Splits "name[12]" into its name and index (-1 without brackets). False when malformed.
bool splitIndex(std::string_view segment, std::string_view& name, int& index) {
    index = -1;
    const std::size_t open = segment.find('[');
    if (open == std::string_view::npos) {
        name = segment;
        return !name.empty();
    }
    if (segment.back() != ']' || open == 0) {
        return false;
    }
    name = segment.substr(0, open);
    const std::string_view digits = segment.substr(open + 1, segment.size() - open - 2);
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), index);
    return error == std::errc() && end == digits.data() + digits.size() && index >= 0;
}

} // namespace

KPlug parsePlug(std::string_view text, KStatus& status) {
    const std::size_t dot = text.find('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == text.size()) {
        status = bad(text, "expected node.attribute");
        return KPlug();
    }
    const std::string_view nodeName = text.substr(0, dot);
    Node* node = nullptr;
    if (nodeName.starts_with('|')) {
        DagNodes path;
        if (findPath(nodeName, path)) {
            node = path.back().get();
        }
    } else {
        node = Scene::current().find(nodeName);
    }
    if (node == nullptr) {
        status = bad(text, "no such node");
        return KPlug();
    }
    KPlug plug;
    std::string_view rest = text.substr(dot + 1);
    while (!rest.empty()) {
        const std::size_t next = rest.find('.');
        const std::string_view segment = rest.substr(0, next);
        rest = next == std::string_view::npos ? std::string_view() : rest.substr(next + 1);
        std::string_view name;
        int index = -1;
        if (!splitIndex(segment, name, index)) {
            status = bad(text, "malformed attribute name or index");
            return KPlug();
        }
        if (plug.isNull()) {
            Attribute* a = node->findAttribute(name);
            if (a == nullptr) {
                status = bad(text, "no such attribute");
                return KPlug();
            }
            // A compound's child may be named directly unless an array lies above it.
            plug = KPlug(objectOf(*node), KObject(a->shared_from_this()));
            if (plug.isNull()) {
                status = bad(text, "the attribute lies inside an array: name the element");
                return KPlug();
            }
        } else {
            Attribute* child = nullptr;
            for (const auto& c : plug.path().back().attribute->children) {
                child = c->named(name) ? c.get() : child;
            }
            plug = child ? plug.child(KObject(child->shared_from_this())) : KPlug();
            if (plug.isNull()) {
                status = bad(text, "no such child attribute");
                return KPlug();
            }
        }
        if (index >= 0) {
            if (!plug.isArray()) {
                status = bad(text, "an index on an attribute that is not an array");
                return KPlug();
            }
            plug = plug.elementByLogicalIndex(static_cast<unsigned int>(index), &status);
            if (!status) {
                return KPlug();
            }
        }
    }
    status = KStatus();
    return plug;
}

} // namespace kova::detail
