#pragma once

#include <kova/KExport.h>

// The unique 32-bit id of a node type or a plug-in data type. Ids are assigned by the
// type's author; the host refuses to register two types with one id.
class KOVA_API KTypeId {
public:
    constexpr KTypeId() = default;
    constexpr explicit KTypeId(unsigned int id) : id_(id) {}

    constexpr unsigned int id() const { return id_; }
    constexpr bool operator==(const KTypeId& other) const { return id_ == other.id_; }
    constexpr bool operator!=(const KTypeId& other) const { return id_ != other.id_; }
    constexpr bool operator<(const KTypeId& other) const { return id_ < other.id_; }

private:
    unsigned int id_ = 0;
};
