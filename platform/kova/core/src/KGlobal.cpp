#include "detail/CommandRegistry.h"
#include "detail/Node.h"
#include "detail/Scene.h"

#include <algorithm>
#include <kova/KFailureInjection.h>
#include <kova/KGlobal.h>
#include <kova/KMessageSink.h>

KStatus KGlobal::getSelectionListByName(const KString& name, KSelectionList& list) {
    if (KFailureInjection::shouldFail("KGlobal::getSelectionListByName")) {
        return KFailureInjection::failure("KGlobal::getSelectionListByName");
    }
    return list.add(name);
}

void KGlobal::displayError(const KString& text) {
    KMessages::error(text);
}

void KGlobal::displayWarning(const KString& text) {
    KMessages::warning(text);
}

void KGlobal::displayInfo(const KString& text) {
    KMessages::info(text);
}

KStatus KGlobal::executeCommand(const KString& command, KStringArray* result) {
    KStatus status;
    if (KFailureInjection::shouldFail("KGlobal::executeCommand")) {
        status = KFailureInjection::failure("KGlobal::executeCommand");
    } else {
        KStringArray words;
        status = kova::detail::CommandRegistry::instance().execute(command.view(), words);
        if (result != nullptr) {
            for (const KString& word : words) {
                result->append(word);
            }
        }
    }
    if (!status) {
        KMessages::error(status.errorString());
    }
    return status;
}

KStatus KGlobal::getAssociatedSets(const KSelectionList& items, KObjectArray& sets) {
    if (KFailureInjection::shouldFail("KGlobal::getAssociatedSets")) {
        return KFailureInjection::failure("KGlobal::getAssociatedSets");
    }
    sets.clear();
    for (const auto& node : kova::detail::Scene::current().nodes()) {
        if (!node->set) {
            continue;
        }
        bool associated = false;
        for (unsigned int i = 0; i < items.length() && !associated; ++i) {
            KDagPath path;
            if (items.getDagPath(i, path)) {
                associated = std::any_of(node->set->members.begin(), node->set->members.end(),
                                         [&](const auto& m) { return m.path == path.nodes(); });
            }
        }
        if (associated) {
            sets.append(kova::detail::objectOf(*node));
        }
    }
    return KStatus();
}
