#pragma once

#include <kova/KExport.h>
#include <kova/KIntArray.h>
#include <kova/KMatrix.h>
#include <kova/KObject.h>
#include <kova/KStatus.h>
#include <kova/KString.h>
#include <kova/KTime.h>
#include <kova/detail/PlugStep.h>
#include <memory>

class KDataHandle;
class KPlugArray;

namespace kova::detail {
class Node;
}

// A plug: one attribute of one node, down to an element of an array attribute or a child of
// a compound ("node.points[3].x").
//
// Array plugs are sparse: elements are addressed by logical index (any unsigned number,
// what users and connections see); their physical indices (0 .. numElements()-1) number the
// existing elements in ascending logical order. An element exists once it was created by
// elementByLogicalIndex, by setting its value, by a connection, or by a compute.
//
// Reading a value (getValue, as...) pulls: connected sources and dirty outputs upstream are
// evaluated first. Writing a value (set..., setValue) fails for a connected destination and
// marks everything downstream dirty.
class KOVA_API KPlug {
public:
    KPlug() = default;
    // The plug of `attribute` on `node`; an attribute that is a compound child is reached
    // through its compounds, which must not be arrays.
    KPlug(const KObject& node, const KObject& attribute);
    // Host internals.
    KPlug(std::shared_ptr<kova::detail::Node> node, kova::detail::PlugPath path);

    bool isNull() const { return node_ == nullptr; }
    KObject node(KStatus* status = nullptr) const;
    // The attribute of the plug (the array attribute for an element).
    KObject attribute(KStatus* status = nullptr) const;

    // "node.attribute[3].child" with long attribute names.
    KString name(KStatus* status = nullptr) const;
    // The attribute path without the node name: only the last attribute unless
    // `useFullAttributePath`, short names unless `useLongNames`.
    KString partialName(bool includeNodeName = false, bool useFullAttributePath = false,
                        bool useLongNames = false, KStatus* status = nullptr) const;

    bool isArray() const;    // an array attribute's own plug
    bool isElement() const;  // one element of an array
    bool isCompound() const; // a compound plug (not an array of compounds)
    bool isChild() const;    // a child of a compound plug

    unsigned int numChildren(KStatus* status = nullptr) const;
    KPlug child(unsigned int index, KStatus* status = nullptr) const;
    KPlug child(const KObject& attribute, KStatus* status = nullptr) const;
    KPlug parent(KStatus* status = nullptr) const;
    KPlug array(KStatus* status = nullptr) const;

    // The element of logical index `index`, created if it does not exist.
    KPlug elementByLogicalIndex(unsigned int index, KStatus* status = nullptr) const;
    KPlug elementByPhysicalIndex(unsigned int index, KStatus* status = nullptr) const;
    unsigned int numElements(KStatus* status = nullptr) const;
    // Fills `indices` with the logical indices of the existing elements, ascending, and
    // returns their number.
    unsigned int getExistingArrayAttributeIndices(KIntArray& indices,
                                                  KStatus* status = nullptr) const;
    unsigned int logicalIndex(KStatus* status = nullptr) const;

    bool isConnected() const;
    bool isDestination() const;
    bool isSource() const;
    // Fills `plugs` with the plugs connected to this one: its source (asDst) and its
    // destinations (asSrc). Returns whether there is any.
    bool connectedTo(KPlugArray& plugs, bool asDst, bool asSrc, KStatus* status = nullptr) const;
    // The plug feeding this one, or a null plug.
    KPlug source(KStatus* status = nullptr) const;
    bool destinations(KPlugArray& plugs, KStatus* status = nullptr) const;

    // Evaluates the plug and gives its value in `handle` (an independent copy).
    KStatus getValue(KDataHandle& handle) const;
    // Releases a handle obtained from getValue.
    void destructHandle(KDataHandle& handle) const;

    double asDouble(KStatus* status = nullptr) const;
    float asFloat(KStatus* status = nullptr) const;
    int asInt(KStatus* status = nullptr) const;
    bool asBool(KStatus* status = nullptr) const;
    KString asString(KStatus* status = nullptr) const;
    KTime asTime(KStatus* status = nullptr) const;
    KMatrix asMatrix(KStatus* status = nullptr) const;
    // The data held (matrix plugs give a matrix data object).
    KObject asKObject(KStatus* status = nullptr) const;

    KStatus setDouble(double value);
    KStatus setFloat(float value);
    KStatus setInt(int value);
    KStatus setBool(bool value);
    KStatus setString(const KString& value);
    KStatus setTime(const KTime& value);
    KStatus setMatrix(const KMatrix& value);
    KStatus setKObject(const KObject& data);
    // Sets every component of a 2-, 3- or 4-component numeric plug.
    KStatus setNumbers(const double* values, unsigned int count);

    KStatus setValue(double value) { return setDouble(value); }
    KStatus setValue(float value) { return setFloat(value); }
    KStatus setValue(int value) { return setInt(value); }
    KStatus setValue(bool value) { return setBool(value); }
    KStatus setValue(const KString& value) { return setString(value); }
    KStatus setValue(const char* value) { return setString(KString(value)); }
    KStatus setValue(const KTime& value) { return setTime(value); }
    KStatus setValue(const KMatrix& value) { return setMatrix(value); }
    KStatus setValue(const KObject& data) { return setKObject(data); }

    bool operator==(const KPlug& other) const;
    bool operator!=(const KPlug& other) const { return !(*this == other); }
    // True when the plug is of `attribute` (any element or child position of it).
    bool operator==(const KObject& attribute) const;
    bool operator!=(const KObject& attribute) const { return !(*this == attribute); }

    // Host internals.
    const std::shared_ptr<kova::detail::Node>& nodeEntity() const { return node_; }
    const kova::detail::PlugPath& path() const { return path_; }

private:
    std::shared_ptr<kova::detail::Node> node_;
    kova::detail::PlugPath path_;
};
