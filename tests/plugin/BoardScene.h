#pragma once

#include "PluginFixture.h"

#include <board/Graph.h>
#include <board/PortDescription.h>
#include <kova/KDGModifier.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnPluginData.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KPlug.h>
#include <kova/KSelectionList.h>
#include <string>
#include <zeldata/ZelData.h>

// A bound plug-in and a board, with helpers to add ports, give the board's graph a body and
// feed its inputs from other nodes, the way a user's scene does.
class BoardScene : public BoundPlugin {
protected:
    bool addPort(const char* name, ZelvaneGraph::Executor::PortDirection direction,
                 const Orsel::Type& type) const {
        return ZelvaneBoard::addPort(board_, {Orsel::String(name), direction, type, {}});
    }
    void setBody(ZelvaneBoard::Graph::Body body) const {
        ZelvaneBoard::BoardNode::fromNode(board_)->graph().setBody(std::move(body));
    }
    KPlug plug(const char* path) const {
        const std::string text(path);
        const auto dot = text.find('.');
        KSelectionList list;
        KObject node;
        list.add(KString(text.substr(0, dot)));
        list.getDependNode(0, node);
        return KFnDependencyNode(node).findPlug(KString(text.substr(dot + 1)), false);
    }
    // A node "name" with a typed attribute "attribute" of `kind` (a host data kind or a
    // plug-in data type id) holding `data`.
    template <class Kind>
    KPlug dataSource(const char* name, const char* attribute, const Kind& kind,
                     const KObject& data) const {
        KFnDependencyNode fnNode;
        const KObject node = fnNode.create("objectSet", name);
        KFnTypedAttribute fnTyped;
        const KObject typed = fnTyped.create(attribute, attribute, kind);
        KDGModifier modifier;
        modifier.addAttribute(node, typed);
        modifier.doIt();
        KPlug source(node, typed);
        source.setKObject(data);
        return source;
    }
    static void connect(const KPlug& source, const KPlug& destination) {
        KDGModifier modifier;
        modifier.connect(source, destination);
        ASSERT_TRUE(modifier.doIt());
    }
    // The objects of the ZelData on a board output (null when there is none).
    const ZelData* outputObjects(const char* attribute) const {
        return dynamic_cast<const ZelData*>(
            KFnPluginData(plug((std::string("board1.") + attribute).c_str()).asKObject()).data());
    }
};
