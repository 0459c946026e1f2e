#include "detail/Attribute.h"
#include "detail/DirtyPropagation.h"
#include "detail/Evaluator.h"
#include "detail/Node.h"
#include "detail/PlugPaths.h"
#include "detail/Report.h"

#include <iterator>
#include <kova/KDataHandle.h>
#include <kova/KFailureInjection.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <limits>
#include <mutex>

using kova::detail::Attribute;
using kova::detail::Node;
using kova::detail::PlugPath;

using kova::detail::report;

namespace {

KStatus invalid(const char* why) {
    return KStatus(KStatus::kInvalidParameter, why);
}

} // namespace

KPlug::KPlug(const KObject& node, const KObject& attribute) {
    auto n = kova::detail::sharedNodeOf(node);
    auto a = kova::detail::sharedAttributeOf(attribute);
    if (!n || !a || !n->owns(*a)) {
        return;
    }
    PlugPath path;
    for (Attribute* p = a.get(); p != nullptr; p = p->parent) {
        if (p != a.get() && p->array) {
            return; // an element of the array above would be needed
        }
        path.insert(path.begin(), {std::static_pointer_cast<Attribute>(p->shared_from_this()), -1});
    }
    node_ = std::move(n);
    path_ = std::move(path);
}

KPlug::KPlug(std::shared_ptr<Node> node, PlugPath path)
    : node_(std::move(node)), path_(std::move(path)) {
    if (path_.empty()) {
        node_.reset();
    }
}

KObject KPlug::node(KStatus* status) const {
    report(status, isNull() ? invalid("null plug") : KStatus());
    return node_ ? kova::detail::objectOf(*node_) : KObject();
}

KObject KPlug::attribute(KStatus* status) const {
    report(status, isNull() ? invalid("null plug") : KStatus());
    return node_ ? kova::detail::objectOf(path_.back().attribute) : KObject();
}

KString KPlug::name(KStatus* status) const {
    if (isNull()) {
        report(status, invalid("null plug"));
        return KString();
    }
    return partialName(true, true, true, status);
}

KString KPlug::partialName(bool includeNodeName, bool useFullAttributePath, bool useLongNames,
                           KStatus* status) const {
    report(status, isNull() ? invalid("null plug") : KStatus());
    if (isNull()) {
        return KString();
    }
    std::string text = includeNodeName ? node_->name + "." : std::string();
    for (std::size_t i = useFullAttributePath ? 0 : path_.size() - 1; i < path_.size(); ++i) {
        const auto& step = path_[i];
        if (text.size() > 0 && text.back() != '.') {
            text += '.';
        }
        text += useLongNames ? step.attribute->longName : step.attribute->shortName;
        if (step.index >= 0) {
            text += "[" + std::to_string(step.index) + "]";
        }
    }
    return KString(text);
}

bool KPlug::isArray() const {
    return !isNull() && path_.back().attribute->array && path_.back().index < 0;
}

bool KPlug::isElement() const {
    return !isNull() && path_.back().index >= 0;
}

bool KPlug::isCompound() const {
    return !isNull() && path_.back().attribute->kind == Attribute::Kind::Compound && !isArray();
}

bool KPlug::isChild() const {
    return path_.size() > 1;
}

unsigned int KPlug::numChildren(KStatus* status) const {
    report(status, isCompound() ? KStatus() : invalid("not a compound plug"));
    return isCompound() ? static_cast<unsigned int>(path_.back().attribute->children.size()) : 0;
}

KPlug KPlug::child(unsigned int index, KStatus* status) const {
    if (!isCompound() || index >= path_.back().attribute->children.size()) {
        report(status, invalid("no such child plug"));
        return KPlug();
    }
    report(status, KStatus());
    PlugPath path = path_;
    path.push_back({path_.back().attribute->children[index], -1});
    return KPlug(node_, std::move(path));
}

KPlug KPlug::child(const KObject& attribute, KStatus* status) const {
    const Attribute* a = kova::detail::attributeOf(attribute);
    if (a == nullptr || isNull() || a->parent != path_.back().attribute.get()) {
        report(status, invalid("not a child of the plug's attribute"));
        return KPlug();
    }
    return child(static_cast<unsigned int>(a->indexInParent), status);
}

KPlug KPlug::parent(KStatus* status) const {
    if (!isChild()) {
        report(status, invalid("not a child plug"));
        return KPlug();
    }
    report(status, KStatus());
    return KPlug(node_, PlugPath(path_.begin(), path_.end() - 1));
}

KPlug KPlug::array(KStatus* status) const {
    if (!isElement()) {
        report(status, invalid("not an array element"));
        return KPlug();
    }
    report(status, KStatus());
    PlugPath path = path_;
    path.back().index = -1;
    return KPlug(node_, std::move(path));
}

KPlug KPlug::elementByLogicalIndex(unsigned int index, KStatus* status) const {
    if (KFailureInjection::shouldFail("KPlug::elementByLogicalIndex")) {
        report(status, KFailureInjection::failure("KPlug::elementByLogicalIndex"));
        return KPlug();
    }
    if (!isArray() || index > static_cast<unsigned int>(std::numeric_limits<int>::max())) {
        report(status, invalid("not an array plug"));
        return KPlug();
    }
    PlugPath path = path_;
    path.back().index = static_cast<int>(index);
    {
        std::lock_guard lock(node_->mutex);
        node_->slot(path, true);
    }
    report(status, KStatus());
    return KPlug(node_, std::move(path));
}

KPlug KPlug::elementByPhysicalIndex(unsigned int index, KStatus* status) const {
    if (KFailureInjection::shouldFail("KPlug::elementByPhysicalIndex")) {
        report(status, KFailureInjection::failure("KPlug::elementByPhysicalIndex"));
        return KPlug();
    }
    if (!isArray()) {
        report(status, invalid("not an array plug"));
        return KPlug();
    }
    std::lock_guard lock(node_->mutex);
    const auto indices = kova::detail::elementIndices(*node_, path_);
    if (index >= indices.size()) {
        report(status, invalid("physical index out of range"));
        return KPlug();
    }
    PlugPath path = path_;
    path.back().index = static_cast<int>(*std::next(indices.begin(), index));
    report(status, KStatus());
    return KPlug(node_, std::move(path));
}

unsigned int KPlug::numElements(KStatus* status) const {
    if (!isArray()) {
        report(status, invalid("not an array plug"));
        return 0;
    }
    report(status, KStatus());
    std::lock_guard lock(node_->mutex);
    return static_cast<unsigned int>(kova::detail::elementIndices(*node_, path_).size());
}

unsigned int KPlug::getExistingArrayAttributeIndices(KIntArray& indices, KStatus* status) const {
    indices.clear();
    if (!isArray()) {
        report(status, invalid("not an array plug"));
        return 0;
    }
    std::lock_guard lock(node_->mutex);
    KStatus result;
    for (unsigned int index : kova::detail::elementIndices(*node_, path_)) {
        if (result) {
            result = indices.append(static_cast<int>(index));
        }
    }
    report(status, result);
    return indices.length();
}

unsigned int KPlug::logicalIndex(KStatus* status) const {
    report(status, isElement() ? KStatus() : invalid("not an array element"));
    return isElement() ? static_cast<unsigned int>(path_.back().index) : 0;
}

bool KPlug::isConnected() const {
    return isDestination() || isSource();
}

bool KPlug::isDestination() const {
    return !isNull() && kova::detail::sourceOf(*node_, path_).has_value();
}

bool KPlug::isSource() const {
    KPlugArray plugs;
    return destinations(plugs);
}

bool KPlug::connectedTo(KPlugArray& plugs, bool asDst, bool asSrc, KStatus* status) const {
    plugs.clear();
    if (isNull()) {
        report(status, invalid("null plug"));
        return false;
    }
    if (KFailureInjection::shouldFail("KPlug::connectedTo")) {
        report(status, KFailureInjection::failure("KPlug::connectedTo"));
        return false;
    }
    report(status, KStatus());
    if (asDst) {
        if (KPlug from = source(); !from.isNull()) {
            plugs.append(from);
        }
    }
    if (asSrc) {
        KPlugArray to;
        destinations(to);
        for (const KPlug& plug : to) {
            plugs.append(plug);
        }
    }
    return plugs.length() > 0;
}

KPlug KPlug::source(KStatus* status) const {
    report(status, isNull() ? invalid("null plug") : KStatus());
    if (isNull()) {
        return KPlug();
    }
    auto found = kova::detail::sourceOf(*node_, path_);
    return found ? KPlug(found->node->shared(), std::move(found->path)) : KPlug();
}

bool KPlug::destinations(KPlugArray& plugs, KStatus* status) const {
    plugs.clear();
    report(status, isNull() ? invalid("null plug") : KStatus());
    if (isNull()) {
        return false;
    }
    for (const auto& connection : node_->outgoing) {
        if (auto mapped =
                kova::detail::mapPath(connection->sourcePath, connection->destinationPath, path_)) {
            plugs.append(KPlug(connection->destination->shared(), std::move(*mapped)));
        }
    }
    return plugs.length() > 0;
}

KStatus KPlug::getValue(KDataHandle& handle) const {
    if (KFailureInjection::shouldFail("KPlug::getValue")) {
        handle = KDataHandle();
        return KFailureInjection::failure("KPlug::getValue");
    }
    if (isNull()) {
        handle = KDataHandle();
        return invalid("null plug");
    }
    auto value = std::make_shared<kova::detail::Value>();
    KStatus status = kova::detail::readValue(*node_, path_, *value);
    handle =
        status ? KDataHandle(value.get(), path_.back().attribute, nullptr, value) : KDataHandle();
    return status;
}

void KPlug::destructHandle(KDataHandle& handle) const {
    handle = KDataHandle();
}

namespace {

// Reads the plug's value through a handle and converts it with `read`.
template <class T, class Read>
T readAs(const KPlug& plug, KStatus* status, Read&& read) {
    KDataHandle handle;
    KStatus result = plug.getValue(handle);
    report(status, result);
    return read(handle);
}

} // namespace

double KPlug::asDouble(KStatus* status) const {
    return readAs<double>(*this, status, [](const KDataHandle& h) { return h.asDouble(); });
}
float KPlug::asFloat(KStatus* status) const {
    return readAs<float>(*this, status, [](const KDataHandle& h) { return h.asFloat(); });
}
int KPlug::asInt(KStatus* status) const {
    return readAs<int>(*this, status, [](const KDataHandle& h) { return h.asInt(); });
}
bool KPlug::asBool(KStatus* status) const {
    return readAs<bool>(*this, status, [](const KDataHandle& h) { return h.asBool(); });
}
KString KPlug::asString(KStatus* status) const {
    return readAs<KString>(*this, status, [](const KDataHandle& h) { return h.asString(); });
}
KTime KPlug::asTime(KStatus* status) const {
    return readAs<KTime>(*this, status, [](const KDataHandle& h) { return h.asTime(); });
}
KMatrix KPlug::asMatrix(KStatus* status) const {
    return readAs<KMatrix>(*this, status, [](const KDataHandle& h) { return h.asMatrix(); });
}
KObject KPlug::asKObject(KStatus* status) const {
    return readAs<KObject>(*this, status, [](const KDataHandle& h) { return h.data(); });
}

namespace {

// Writes the plug's stored value through a handle with `write`, then marks its dependents
// dirty (the plug itself is clean: it holds what was just set).
template <class Write>
KStatus writeAs(const KPlug& plug, const char* operation, Write&& write) {
    if (KFailureInjection::shouldFail(operation)) {
        return KFailureInjection::failure(operation);
    }
    if (plug.isNull() || !plug.nodeEntity()->inScene) {
        return invalid("the plug is null or its node is not in the scene");
    }
    Node& node = *plug.nodeEntity();
    Attribute& attribute = *plug.path().back().attribute;
    if (plug.isArray()) {
        return invalid("set the elements of an array plug, not the array");
    }
    if (kova::detail::sourceOf(node, plug.path())) {
        KString text;
        text.format("'^1s' is connected and cannot be set", plug.name());
        return KStatus(KStatus::kInvalidParameter, text);
    }
    KStatus status;
    {
        std::lock_guard lock(node.mutex);
        kova::detail::Value* slot = node.slot(plug.path(), true);
        if (slot == nullptr) {
            return invalid("the plug has no value");
        }
        KDataHandle handle(slot, plug.path().back().attribute, &node);
        status = write(handle);
    }
    if (status) {
        kova::detail::propagateDirty(node, attribute, false);
        std::lock_guard lock(node.mutex);
        kova::detail::markClean(node, attribute);
    }
    return status;
}

} // namespace

KStatus KPlug::setDouble(double value) {
    return writeAs(*this, "KPlug::setDouble", [&](KDataHandle& h) { return h.setDouble(value); });
}
KStatus KPlug::setFloat(float value) {
    return writeAs(*this, "KPlug::setFloat", [&](KDataHandle& h) { return h.setFloat(value); });
}
KStatus KPlug::setInt(int value) {
    return writeAs(*this, "KPlug::setInt", [&](KDataHandle& h) { return h.setInt(value); });
}
KStatus KPlug::setBool(bool value) {
    return writeAs(*this, "KPlug::setBool", [&](KDataHandle& h) { return h.setBool(value); });
}
KStatus KPlug::setString(const KString& value) {
    return writeAs(*this, "KPlug::setString", [&](KDataHandle& h) { return h.setString(value); });
}
KStatus KPlug::setTime(const KTime& value) {
    return writeAs(*this, "KPlug::setTime", [&](KDataHandle& h) { return h.setTime(value); });
}
KStatus KPlug::setMatrix(const KMatrix& value) {
    return writeAs(*this, "KPlug::setMatrix", [&](KDataHandle& h) { return h.setKMatrix(value); });
}
KStatus KPlug::setKObject(const KObject& data) {
    return writeAs(*this, "KPlug::setKObject", [&](KDataHandle& h) { return h.set(data); });
}
KStatus KPlug::setNumbers(const double* values, unsigned int count) {
    return writeAs(*this, "KPlug::setNumbers",
                   [&](KDataHandle& h) { return h.setNumbers(values, count); });
}

bool KPlug::operator==(const KPlug& other) const {
    return node_ == other.node_ && path_ == other.path_;
}

bool KPlug::operator==(const KObject& attribute) const {
    return !isNull() && attribute.entity() == path_.back().attribute;
}
