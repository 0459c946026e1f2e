#include "detail/Attribute.h"
#include "detail/Evaluator.h"
#include "detail/Node.h"
#include "detail/Report.h"

#include <kova/KDataBlock.h>
#include <kova/KFailureInjection.h>
#include <mutex>

using kova::detail::Attribute;
using kova::detail::Node;
using kova::detail::PlugPath;

using kova::detail::report;

namespace {

// The plug of `attribute` on `node`, or a null plug when it is not the node's attribute or
// sits below an array.
KPlug plugOf(Node& node, const KObject& attribute) {
    return KPlug(kova::detail::objectOf(node), attribute);
}

} // namespace

const KDGContext KDGContext::fsNormal;

KDataBlock::KDataBlock(Node& node, const KDGContext& context) : node_(&node), context_(context) {}

KDataHandle KDataBlock::inputValue(const KObject& attribute, KStatus* status) {
    return inputValue(plugOf(*node_, attribute), status);
}

KDataHandle KDataBlock::inputValue(const KPlug& plug, KStatus* status) {
    if (KFailureInjection::shouldFail("KDataBlock::inputValue")) {
        report(status, KFailureInjection::failure("KDataBlock::inputValue"));
        return KDataHandle();
    }
    if (plug.isNull() || plug.nodeEntity().get() != node_) {
        report(status, KStatus(KStatus::kInvalidParameter, "not a plug of this node"));
        return KDataHandle();
    }
    std::lock_guard lock(node_->mutex);
    KStatus result = kova::detail::evaluate(*node_, plug.path());
    report(status, result);
    if (!result) {
        return KDataHandle();
    }
    return KDataHandle(node_->slot(plug.path(), true), plug.path().back().attribute, node_);
}

KArrayDataHandle KDataBlock::inputArrayValue(const KObject& attribute, KStatus* status) {
    return inputArrayValue(plugOf(*node_, attribute), status);
}

KArrayDataHandle KDataBlock::inputArrayValue(const KPlug& plug, KStatus* status) {
    if (KFailureInjection::shouldFail("KDataBlock::inputArrayValue")) {
        report(status, KFailureInjection::failure("KDataBlock::inputArrayValue"));
        return KArrayDataHandle();
    }
    if (!plug.isArray()) {
        report(status, KStatus(KStatus::kInvalidParameter, "not an array plug"));
        return KArrayDataHandle();
    }
    KDataHandle handle = inputValue(plug, status);
    return handle.isNull() ? KArrayDataHandle()
                           : KArrayDataHandle(handle.value(), plug.path().back().attribute, node_);
}

KDataHandle KDataBlock::outputValue(const KObject& attribute, KStatus* status) {
    return outputValue(plugOf(*node_, attribute), status);
}

KDataHandle KDataBlock::outputValue(const KPlug& plug, KStatus* status) {
    if (KFailureInjection::shouldFail("KDataBlock::outputValue")) {
        report(status, KFailureInjection::failure("KDataBlock::outputValue"));
        return KDataHandle();
    }
    if (plug.isNull() || plug.nodeEntity().get() != node_) {
        report(status, KStatus(KStatus::kInvalidParameter, "not a plug of this node"));
        return KDataHandle();
    }
    std::lock_guard lock(node_->mutex);
    kova::detail::Value* slot = node_->slot(plug.path(), true);
    report(status, slot ? KStatus() : KStatus(KStatus::kFailure, "the node holds no values"));
    return slot ? KDataHandle(slot, plug.path().back().attribute, node_) : KDataHandle();
}

KArrayDataHandle KDataBlock::outputArrayValue(const KObject& attribute, KStatus* status) {
    return outputArrayValue(plugOf(*node_, attribute), status);
}

KArrayDataHandle KDataBlock::outputArrayValue(const KPlug& plug, KStatus* status) {
    if (KFailureInjection::shouldFail("KDataBlock::outputArrayValue")) {
        report(status, KFailureInjection::failure("KDataBlock::outputArrayValue"));
        return KArrayDataHandle();
    }
    if (!plug.isArray()) {
        report(status, KStatus(KStatus::kInvalidParameter, "not an array plug"));
        return KArrayDataHandle();
    }
    KDataHandle handle = outputValue(plug, status);
    return handle.isNull() ? KArrayDataHandle()
                           : KArrayDataHandle(handle.value(), plug.path().back().attribute, node_);
}

KStatus KDataBlock::setClean(const KPlug& plug) {
    if (KFailureInjection::shouldFail("KDataBlock::setClean")) {
        return KFailureInjection::failure("KDataBlock::setClean");
    }
    if (plug.isNull() || plug.nodeEntity().get() != node_) {
        return KStatus(KStatus::kInvalidParameter, "not a plug of this node");
    }
    std::lock_guard lock(node_->mutex);
    kova::detail::markClean(*node_, *plug.path().back().attribute);
    return KStatus();
}

KStatus KDataBlock::setClean(const KObject& attribute) {
    return setClean(plugOf(*node_, attribute));
}
