#pragma once

#include <kova/KArrayDataHandle.h>
#include <kova/KDGContext.h>
#include <kova/KDataHandle.h>
#include <kova/KExport.h>
#include <kova/KObject.h>
#include <kova/KPlug.h>
#include <kova/KStatus.h>

namespace kova::detail {
class Node;
}

// The values of one node during its compute. inputValue pulls (connected sources and
// dirty outputs upstream are evaluated first); outputValue gives the stored value to write.
// Handles point into the node's storage and are valid during the compute.
class KOVA_API KDataBlock {
public:
    // Host internals.
    explicit KDataBlock(kova::detail::Node& node, const KDGContext& context = KDGContext());

    KDataHandle inputValue(const KObject& attribute, KStatus* status = nullptr);
    KDataHandle inputValue(const KPlug& plug, KStatus* status = nullptr);
    KArrayDataHandle inputArrayValue(const KObject& attribute, KStatus* status = nullptr);
    KArrayDataHandle inputArrayValue(const KPlug& plug, KStatus* status = nullptr);
    KDataHandle outputValue(const KObject& attribute, KStatus* status = nullptr);
    KDataHandle outputValue(const KPlug& plug, KStatus* status = nullptr);
    KArrayDataHandle outputArrayValue(const KObject& attribute, KStatus* status = nullptr);
    KArrayDataHandle outputArrayValue(const KPlug& plug, KStatus* status = nullptr);

    // Marks the plug's attribute clean.
    KStatus setClean(const KPlug& plug);
    KStatus setClean(const KObject& attribute);
    const KDGContext& context() const { return context_; }

private:
    kova::detail::Node* node_;
    KDGContext context_;
};
