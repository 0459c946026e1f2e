#pragma once

#include <cstddef>
#include <functional>
#include <kova/KExport.h>
#include <kova/KObject.h>
#include <kova/KPlug.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KTypeId.h>
#include <string>
#include <vector>

// Queues changes to the dependency graph and makes them in one go. Nothing changes until
// doIt(), which runs the queued operations in order and stops at the first that fails; that
// one and those after it stay queued (a later doIt() tries them again). Queuing checks what
// it can at once (a null node, an unknown type) and fails without queuing.
class KOVA_API KDGModifier {
public:
    KDGModifier() = default;
    virtual ~KDGModifier();
    KDGModifier(const KDGModifier&) = delete;
    KDGModifier& operator=(const KDGModifier&) = delete;

    // A node of a registered type. The object is valid at once; the node joins the scene,
    // with its type's default name, in doIt().
    KObject createNode(const KString& typeName, KStatus* status = nullptr);
    KObject createNode(const KTypeId& typeId, KStatus* status = nullptr);
    KStatus deleteNode(const KObject& node);
    KStatus renameNode(const KObject& node, const KString& name);
    KStatus connect(const KPlug& source, const KPlug& destination);
    KStatus connect(const KObject& sourceNode, const KObject& sourceAttribute,
                    const KObject& destinationNode, const KObject& destinationAttribute);
    KStatus disconnect(const KPlug& source, const KPlug& destination);
    KStatus disconnect(const KObject& sourceNode, const KObject& sourceAttribute,
                       const KObject& destinationNode, const KObject& destinationAttribute);
    // Adds a dynamic attribute to one node.
    KStatus addAttribute(const KObject& node, const KObject& attribute);
    KStatus removeAttribute(const KObject& node, const KObject& attribute);
    KStatus newPlugValue(const KPlug& plug, const KObject& data);
    KStatus newPlugValueDouble(const KPlug& plug, double value);
    KStatus newPlugValueInt(const KPlug& plug, int value);
    KStatus newPlugValueBool(const KPlug& plug, bool value);
    KStatus newPlugValueString(const KPlug& plug, const KString& value);
    // A host command line (see KGlobal::executeCommand).
    KStatus commandToExecute(const KString& command);

    KStatus doIt();
    // Operations queued and not yet done.
    unsigned int pendingCount() const;

protected:
    // Queues `run`, described by `what` for failure messages.
    void queue(std::string what, std::function<KStatus()> run);

private:
    KStatus queueSet(const KPlug& plug, const char* operation, std::function<KStatus(KPlug&)> set);
    struct Operation {
        std::string what;
        std::function<KStatus()> run;
    };
    std::vector<Operation> operations_;
    std::size_t done_ = 0;
};
