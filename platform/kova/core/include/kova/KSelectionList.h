#pragma once

#include <kova/KDagPath.h>
#include <kova/KExport.h>
#include <kova/KObject.h>
#include <kova/KPlug.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KStringArray.h>
#include <vector>

// An ordered list of scene items: dependency nodes, DAG paths (with optional components)
// and plugs.
class KOVA_API KSelectionList {
public:
    KSelectionList() = default;

    // Adds what `pattern` names: a plug ("node.attr[2]"), a full DAG path ("|a|b"), or node
    // names with the wildcards * (any run of characters) and ? (one character), each match in
    // scene order. Fails with kInvalidParameter when nothing matches.
    KStatus add(const KString& pattern);
    // A node (DAG nodes are added with their first path).
    KStatus add(const KObject& node);
    KStatus add(const KDagPath& path, const KObject& component = KObject::kNullObj);
    KStatus add(const KPlug& plug);

    unsigned int length(KStatus* status = nullptr) const;
    bool isEmpty() const { return items_.empty(); }
    KStatus remove(unsigned int index);
    void clear() { items_.clear(); }

    KStatus getDependNode(unsigned int index, KObject& node) const;
    // Fails for items that are not DAG paths.
    KStatus getDagPath(unsigned int index, KDagPath& path, KObject& component) const;
    KStatus getDagPath(unsigned int index, KDagPath& path) const;
    KStatus getPlug(unsigned int index, KPlug& plug) const;
    // The items as text: node names, full path names, plug names.
    KStatus getSelectionStrings(KStringArray& strings) const;

private:
    struct Item {
        KObject node;
        KDagPath path;
        KObject component;
        KPlug plug;
    };
    std::vector<Item> items_;
};
