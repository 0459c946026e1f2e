#include "detail/Dag.h"
#include "detail/Node.h"
#include "detail/Scene.h"

#include <kova/KScene.h>

KScene& KScene::current() {
    static KScene scene;
    kova::detail::Scene::current();
    return scene;
}

void KScene::reset() {
    kova::detail::Scene::reset();
}

KObjectArray KScene::nodes() const {
    KObjectArray out;
    for (const auto& node : kova::detail::Scene::current().nodes()) {
        out.append(kova::detail::objectOf(*node));
    }
    return out;
}

KObject KScene::findNode(const KString& name) const {
    kova::detail::Node* node = kova::detail::findNode(name.view());
    return node ? kova::detail::objectOf(*node) : KObject();
}

unsigned int KScene::nodeCount() const {
    return static_cast<unsigned int>(kova::detail::Scene::current().nodes().size());
}
