#pragma once

#include "PluginFixture.h"

#include <board/Graph.h>
#include <board/PortDescription.h>
#include <dlfcn.h>
#include <initializer_list>
#include <kova/KDGModifier.h>
#include <kova/KDataHandle.h>
#include <kova/KFnDependencyNode.h>
#include <kova/KFnGenericAttribute.h>
#include <kova/KFnPluginData.h>
#include <kova/KFnTypedAttribute.h>
#include <kova/KPlug.h>
#include <kova/KPlugArray.h>
#include <kova/KSelectionList.h>
#include <string>
#include <vector>
#include <zeldata/ZelData.h>
#include <zelvane/Object.h>

// A bound plug-in and a board, with helpers to add ports, give the board's graph a body and
// feed its inputs from other nodes, the way a user's scene does.
class BoardScene : public BoundPlugin {
protected:
    void TearDown() override {
        seen_ = Orsel::Value(); // values made by the plug-in go before it is unloaded
        BoundPlugin::TearDown();
    }

    bool addPort(const char* name, ZelvaneGraph::Executor::PortDirection direction,
                 const Orsel::Type& type, Orsel::MetadataItem metadata = {}) const {
        return ZelvaneBoard::addPort(board_,
                                     {Orsel::String(name), direction, type, std::move(metadata)});
    }
    void setBody(ZelvaneBoard::Graph::Body body) const {
        ZelvaneBoard::BoardNode::fromNode(board_)->graph().setBody(std::move(body));
    }
    // Gives the graph a body that keeps what it sees on the input `port` in `seen_` (nothing
    // when the port has no value).
    void watch(std::string port) {
        setBody([this, port = std::move(port)](const ZelvaneBoard::PortValues& in) {
            const auto found = in.find(port);
            seen_ = found == in.end() ? Orsel::Value() : found->second;
            return ZelvaneBoard::PortValues{};
        });
    }
    // Adds the input port `name` and watches it.
    void watchInput(const char* name, const Orsel::Type& type, Orsel::MetadataItem metadata = {}) {
        ASSERT_TRUE(
            addPort(name, ZelvaneGraph::Executor::PortDirection::Input, type, std::move(metadata)));
        watch(name);
    }
    Orsel::Ptr<Zelvane::Object> seenObject() const {
        return seen_.getOrselClass<Zelvane::Object>();
    }

    // The plug "node.attribute".
    KPlug plug(const char* path) const {
        const std::string text(path);
        const auto dot = text.find('.');
        KSelectionList list;
        KObject node;
        list.add(KString(text.substr(0, dot)));
        list.getDependNode(0, node);
        return KFnDependencyNode(node).findPlug(KString(text.substr(dot + 1)), false);
    }
    // The names of the plugs feeding `destination`.
    static std::vector<std::string> sourcesOf(const KPlug& destination) {
        KPlugArray sources;
        destination.connectedTo(sources, true, false);
        std::vector<std::string> names;
        for (unsigned int i = 0; i < sources.length(); ++i) {
            names.push_back(sources[i].name().str());
        }
        return names;
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
    // An array attribute `name` on `node` taking data of `kinds`: an object port added later
    // takes it over and merges its elements into one object.
    static void addArrayAttribute(const KObject& node, const char* name,
                                  std::initializer_list<KFnData::Type> kinds) {
        KFnGenericAttribute fnGeneric;
        const KObject attribute = fnGeneric.create(name, name);
        ASSERT_TRUE(fnGeneric.setArray(true));
        for (const KFnData::Type kind : kinds) {
            ASSERT_TRUE(fnGeneric.addDataAccept(kind));
        }
        KDGModifier modifier;
        modifier.addAttribute(node, attribute);
        ASSERT_TRUE(modifier.doIt());
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
    // The plug-in's exported function `symbol`, found as other libraries find it (null when
    // missing); valid while the plug-in is bound.
    template <class Function>
    static Function pluginFunction(const char* symbol) {
        void* library = dlopen(PLUGIN_PATH, RTLD_NOW | RTLD_NOLOAD);
        void* found = library ? dlsym(library, symbol) : nullptr;
        if (library) {
            dlclose(library);
        }
        return reinterpret_cast<Function>(found);
    }

    Orsel::Value seen_;
};
