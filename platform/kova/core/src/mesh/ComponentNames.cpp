#include "mesh/ComponentNames.h"

#include "detail/Dag.h"

#include <charconv>
#include <kova/KFnSingleIndexedComponent.h>
#include <string>

namespace kova::mesh {

namespace {

KFn::Type componentKind(std::string_view suffix) {
    if (suffix == "vtx") {
        return KFn::kMeshVertComponent;
    }
    if (suffix == "e") {
        return KFn::kMeshEdgeComponent;
    }
    if (suffix == "f") {
        return KFn::kMeshPolygonComponent;
    }
    return suffix == "cv" ? KFn::kCurveCVComponent : KFn::kInvalid;
}

bool parseIndex(std::string_view text, int& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && value >= 0;
}

} // namespace

bool parseComponentName(std::string_view text, KDagPath& path, KObject& component,
                        KStatus& status) {
    const std::size_t dot = text.rfind('.');
    const std::size_t open = text.find('[', dot == std::string_view::npos ? 0 : dot);
    if (dot == std::string_view::npos || open == std::string_view::npos || !text.ends_with(']')) {
        return false;
    }
    const KFn::Type kind = componentKind(text.substr(dot + 1, open - dot - 1));
    if (kind == KFn::kInvalid) {
        return false;
    }
    const std::string_view node = text.substr(0, dot);
    const std::string_view range = text.substr(open + 1, text.size() - open - 2);
    const std::size_t colon = range.find(':');
    int first = 0;
    int last = 0;
    const bool indices = colon == std::string_view::npos
                             ? parseIndex(range, first) && parseIndex(range, last)
                             : parseIndex(range.substr(0, colon), first) &&
                                   parseIndex(range.substr(colon + 1), last);
    detail::DagNodes nodes;
    if (!detail::findPath(node, nodes)) {
        return false; // not a DAG node: a plug of the same form, perhaps
    }
    if (!indices || first > last) {
        status = KStatus(KStatus::kInvalidParameter,
                         KString("bad component index in '" + std::string(text) + "'"));
    } else {
        path = KDagPath(std::move(nodes));
        status = path.extendToShape();
    }
    KFnSingleIndexedComponent fn;
    if (status) {
        component = fn.create(kind, &status);
    }
    for (int i = first; status && i <= last; ++i) {
        status = fn.addElement(i);
    }
    return true;
}

} // namespace kova::mesh
