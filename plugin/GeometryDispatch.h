#pragma once

#include <orsel/Array.h>
#include <orsel/MetadataItem.h>
#include <orsel/Ptr.h>
#include <zelvane/Object.h>

class KPlug;
class KDataHandle;
class KArrayDataHandle;

// Host geometry of a graph input port as graph objects. Each source feeding the port is
// recognised by its data kind (double array, vector array, mesh, NURBS curve, objects in a
// ZelData, or a message connection from a shader or operator node) and sent to its converter.

// A single port: the object of its first source, or a new empty object when it has none.
// Objects that the host still holds (through a ZelData) are copied before being handed out.
// Null when the first source converts to nothing.
__attribute__((visibility("default"))) Orsel::MutablePtr<Zelvane::Object>
kovaGeoToZelvane(const KPlug& plug, const KDataHandle& handle, const Orsel::MetadataItem& options);

// An array port: the objects of all elements, in physical order. An element may give zero,
// one or several objects.
__attribute__((visibility("default"))) Orsel::MutablePtr<Orsel::Array<Orsel::Ptr<Zelvane::Object>>>
kovaGeoToZelvane(const KPlug& plug, KArrayDataHandle& handle, const Orsel::MetadataItem& options);

// An array port whose elements are all NURBS curves, as one strand object; null when some
// element is not a curve.
__attribute__((visibility("default"))) Orsel::MutablePtr<Zelvane::Object>
kovaGeoToZelvaneMerged(const KPlug& plug, KArrayDataHandle& handle,
                       const Orsel::MetadataItem& options);
