#pragma once

#include <orsel/Array.h>
#include <orsel/EntityIndexedList.h>
#include <orsel/Library.h>
#include <orsel/MetadataItem.h>
#include <orsel/String.h>
#include <orsel/Type.h>
#include <orsel/Value.h>
#include <zelvane/executor/ExecutorExport.h>
#include <zelvane/executor/HostPortContext.h>
#include <zelvane/executor/PortDirection.h>

class KObject;

namespace ZelvaneGraph::Executor {

// The interface through which the board executor drives a translation library: which graph
// types may cross the host boundary, host attributes for new graph ports, and the values of
// ports in both directions. Libraries hand one out from their exported factory
// `createZelvaneTypeTranslation` and the executor gives it back through `release`.
//
// The order of the virtual operations is part of the binary interface between the executor
// and translation libraries built separately; never reorder them.
class ZELVANE_EXECUTOR_API TypeTranslation {
public:
    virtual ~TypeTranslation();

    // Destroys the object in the library that made it.
    virtual void release() = 0;

    // Appends the types of `library` whose names getSupportedTypeNames reports.
    virtual void getSupportedTypes(const Orsel::Library& library,
                                   Orsel::EntityIndexedList<Orsel::Type>& types) const;

    // Appends the fully qualified names of the graph types this translation handles.
    virtual void getSupportedTypeNames(Orsel::Array<Orsel::String>& names) const = 0;

    // Fills `destination` with the graph value of an input port before an evaluation.
    // Returns false when the port's type is not handled; the default handles nothing.
    virtual bool translateInputValue(const Orsel::Type& portType, Orsel::Value& destination,
                                     const HostPortContext& context) const;

    // Writes a non-object result (time, scene information, ...) back into host data after
    // an evaluation. The default handles nothing.
    virtual bool translateOutputData(const Orsel::Value& result,
                                     const HostPortContext& context) const;

    // A graph port was added to the host node `node`: create the host attribute (and
    // connections) that represent it. Returns false when nothing was created.
    virtual bool portAdded(const KObject& node, const Orsel::String& portName,
                           PortDirection direction, const Orsel::Type& type,
                           const Orsel::MetadataItem& metadata) const = 0;

    // A port of the node named `nodeName` was removed or renamed. Translations that keep
    // state per port override these; the host attributes belong to the board.
    virtual void portRemoved(const Orsel::String& nodeName, const Orsel::String& portName);
    virtual void portRenamed(const Orsel::String& nodeName, const Orsel::String& oldName,
                             const Orsel::String& newName);

    // Binds and unbinds the library's host-side plug-ins (node types, data, strings).
    virtual bool registerHostPlugins(const KObject& plugin) = 0;
    virtual bool deregisterHostPlugins(const KObject& plugin) = 0;

    // Writes an object result into the host output attribute after an evaluation.
    // The default handles nothing.
    virtual bool translateOutputValue(const Orsel::Value& value,
                                      const HostPortContext& context) const;
};

} // namespace ZelvaneGraph::Executor

// The factory every translation library exports (unmangled).
using CreateZelvaneTypeTranslationFn = ZelvaneGraph::Executor::TypeTranslation* (*)();
inline constexpr const char* kCreateZelvaneTypeTranslationSymbol = "createZelvaneTypeTranslation";
