#include "detail/Scene.h"

#include "detail/Connect.h"
#include "detail/Node.h"
#include "detail/TypeRegistry.h"

#include <algorithm>
#include <cctype>
#include <kova/detail/Guarded.h>

namespace kova::detail {

namespace {

Scene*& sceneSlot() {
    // Never destroyed: nodes may hold plug-in code that is gone by the time static
    // destructors run.
    static Scene* scene = nullptr;
    return scene;
}

KString who(const char* step, const std::string& typeName) {
    KString text;
    text.format("The ^1s of node type '^2s'", KString(step), KString(typeName));
    return text;
}

} // namespace

Scene& Scene::current() {
    Scene*& scene = sceneSlot();
    if (scene == nullptr) {
        scene = new Scene;
        scene->createDefaults();
    }
    return *scene;
}

void Scene::reset() {
    Scene& scene = current();
    while (!scene.nodes_.empty()) {
        scene.remove(*scene.nodes_.back());
    }
    scene.createDefaults();
}

void Scene::createDefaults() {
    for (const auto& [typeName, name] :
         {std::pair{"time", "time1"}, std::pair{"shadingEngine", "initialShadingGroup"}}) {
        if (auto type = TypeRegistry::instance().findNode(typeName)) {
            insert(instantiate(type), name);
        }
    }
}

std::shared_ptr<Node> Scene::instantiate(const std::shared_ptr<NodeType>& type) {
    return std::make_shared<Node>(type);
}

KStatus Scene::insert(const std::shared_ptr<Node>& node, std::string_view requestedName) {
    if (node->inScene || node->user) {
        return KStatus(KStatus::kInvalidParameter, "the node was created before");
    }
    const NodeType& type = *node->type;
    const std::string wanted = requestedName.empty() ? type.name + "1" : std::string(requestedName);
    if (!isValidName(wanted)) {
        return KStatus(KStatus::kInvalidParameter, KString("invalid node name '" + wanted + "'"));
    }
    void* instance = nullptr;
    if (!runGuarded([&] { instance = type.creator ? type.creator() : nullptr; },
                    [&] { return who("creator", type.name); })) {
        return KStatus(KStatus::kFailure, KString("the creator of '" + type.name + "' threw"));
    }
    if (instance == nullptr) {
        return KStatus(KStatus::kFailure,
                       KString("the creator of '" + type.name + "' made no node"));
    }
    node->user.reset(static_cast<KPxNode*>(instance));
    NodeAccess::attach(*node->user, node);
    node->name = uniqueName(wanted, nullptr);
    byName_[node->name] = node.get();
    nodes_.push_back(node);
    node->inScene = true;
    if (!runGuarded([&] { node->user->postConstructor(); },
                    [&] { return who("postConstructor", type.name); })) {
        remove(*node);
        return KStatus(KStatus::kFailure,
                       KString("the postConstructor of '" + type.name + "' threw"));
    }
    return KStatus();
}

KStatus Scene::remove(Node& node) {
    if (!node.inScene) {
        return KStatus(KStatus::kInvalidParameter, "the node is not in the scene");
    }
    const std::shared_ptr<Node> keep = node.shared();
    for (Node* child : std::vector<Node*>(node.children)) {
        if (child->parents.size() <= 1) {
            remove(*child);
        } else {
            std::erase(child->parents, &node);
        }
    }
    disconnectAll(node);
    for (Node* parent : node.parents) {
        std::erase(parent->children, &node);
    }
    node.parents.clear();
    for (const auto& other : nodes_) {
        if (other->set) {
            std::erase_if(other->set->members, [&](const SetMember& member) {
                return std::any_of(member.path.begin(), member.path.end(),
                                   [&](const auto& n) { return n.get() == &node; });
            });
        }
    }
    std::erase_if(nodes_, [&](const auto& n) { return n.get() == &node; });
    byName_.erase(node.name);
    node.inScene = false;
    node.release();
    return KStatus();
}

KStatus Scene::rename(Node& node, std::string_view name) {
    if (!node.inScene) {
        return KStatus(KStatus::kInvalidParameter, "the node is not in the scene");
    }
    if (!isValidName(name)) {
        return KStatus(KStatus::kInvalidParameter,
                       KString("invalid node name '" + std::string(name) + "'"));
    }
    const std::string unique = uniqueName(name, &node);
    byName_.erase(node.name);
    node.name = unique;
    byName_[unique] = &node;
    return KStatus();
}

Node* Scene::find(std::string_view name) const {
    const auto found = byName_.find(std::string(name));
    return found == byName_.end() ? nullptr : found->second;
}

int Scene::countOfType(const NodeType& type) const {
    return static_cast<int>(std::count_if(nodes_.begin(), nodes_.end(),
                                          [&](const auto& n) { return n->type.get() == &type; }));
}

bool Scene::isValidName(std::string_view name) {
    if (name.empty() || std::isdigit(static_cast<unsigned char>(name.front()))) {
        return false;
    }
    return std::all_of(name.begin(), name.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
    });
}

std::string Scene::uniqueName(std::string_view wanted, const Node* self) const {
    const auto taken = [&](const std::string& name) {
        const Node* owner = find(name);
        return owner != nullptr && owner != self;
    };
    std::string name(wanted);
    if (!taken(name)) {
        return name;
    }
    std::string base = name;
    while (!base.empty() && std::isdigit(static_cast<unsigned char>(base.back()))) {
        base.pop_back();
    }
    for (unsigned long n = 1;; ++n) {
        name = base + std::to_string(n);
        if (!taken(name)) {
            return name;
        }
    }
}

} // namespace kova::detail
