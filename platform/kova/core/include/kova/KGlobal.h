#pragma once

#include <kova/KExport.h>
#include <kova/KObjectArray.h>
#include <kova/KSelectionList.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KStringArray.h>

// Host-wide services: lookups by name, messages to the user and commands.
class KOVA_API KGlobal {
public:
    // Adds what `name` names (see KSelectionList::add) to `list`.
    static KStatus getSelectionListByName(const KString& name, KSelectionList& list);

    // Messages through the host's message sink (KMessages).
    static void displayError(const KString& text);
    static void displayWarning(const KString& text);
    static void displayInfo(const KString& text);

    // Runs a command line: commands separated by ";", each a name followed by words,
    // double-quoted strings and flags. Result words are appended to `result`. A failure is
    // also reported as an error message "<command>: <reason>".
    // Commands: createNode, connectAttr, disconnectAttr, setAttr, getAttr, rename, delete, ls,
    // sets (see the host documentation for their flags).
    static KStatus executeCommand(const KString& command, KStringArray* result = nullptr);

    // The sets (in scene order) that have a DAG path of `items` as a member, whole or with
    // components.
    static KStatus getAssociatedSets(const KSelectionList& items, KObjectArray& sets);
};
