#pragma once

#include <kova/KStatus.h>
#include <memory>
#include <string_view>
#include <vector>

namespace kova::detail {

class Attribute;

// The attributes of one owner (a node type, or a node's dynamic attributes), flattened:
// a compound is followed by its children. Each attribute's index is `base` plus its
// position; removed attributes leave an empty slot so that indices stay stable.
class AttributeList {
public:
    explicit AttributeList(int base = 0) : base_(base) {}

    // Adds `attribute` and its children, claiming them for `owner`. Fails when one of them
    // already belongs elsewhere, is a child whose compound is not here, or uses a name that
    // is taken (here or, through `alsoTaken`, elsewhere).
    KStatus add(const std::shared_ptr<Attribute>& attribute, const void* owner,
                const AttributeList* alsoTaken = nullptr);
    // Removes `attribute` and its children (top-level attributes only).
    KStatus remove(Attribute& attribute);

    Attribute* find(std::string_view name) const;
    const std::shared_ptr<Attribute>& at(int index) const;
    bool contains(int index) const;
    int base() const { return base_; }
    int end() const { return base_ + static_cast<int>(items_.size()); }
    // The live attributes in index order.
    std::vector<std::shared_ptr<Attribute>> live() const;

private:
    int base_;
    std::vector<std::shared_ptr<Attribute>> items_;
};

} // namespace kova::detail
