#pragma once

#include <kova/KExport.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <vector>

// An ordered list of object handles.
class KOVA_API KObjectArray {
public:
    KObjectArray() = default;

    unsigned int length() const { return static_cast<unsigned int>(items_.size()); }
    // Unchecked access, like every host array; use get() for a checked read.
    const KObject& operator[](unsigned int index) const { return items_[index]; }
    KObject& operator[](unsigned int index) { return items_[index]; }
    KStatus get(unsigned int index, KObject& object) const;
    void append(const KObject& object) { items_.push_back(object); }
    KStatus insert(const KObject& object, unsigned int index);
    KStatus remove(unsigned int index);
    void clear() { items_.clear(); }
    // Index of the first handle equal to `object`, or -1.
    int indexOf(const KObject& object) const;

    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    std::vector<KObject> items_;
};
