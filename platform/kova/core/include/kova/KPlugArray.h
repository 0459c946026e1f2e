#pragma once

#include <kova/KExport.h>
#include <kova/KPlug.h>
#include <kova/KStatus.h>
#include <vector>

// An ordered list of plugs.
class KOVA_API KPlugArray {
public:
    KPlugArray() = default;

    unsigned int length() const { return static_cast<unsigned int>(items_.size()); }
    // Unchecked access, like every host array.
    const KPlug& operator[](unsigned int index) const { return items_[index]; }
    KPlug& operator[](unsigned int index) { return items_[index]; }
    void append(const KPlug& plug) { items_.push_back(plug); }
    KStatus remove(unsigned int index);
    void clear() { items_.clear(); }
    KStatus setLength(unsigned int length);

    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    std::vector<KPlug> items_;
};
