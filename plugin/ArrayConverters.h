#pragma once

#include <orsel/Ptr.h>
#include <zelvane/Object.h>

class KPlug;
class KDataHandle;

// Host double and vector arrays as graph objects: one property, named after the plug's
// partial name (no property when that name is empty), holding the values as 32-bit floats.
// A handle of another data kind, or data that can't be read, gives null.
__attribute__((visibility("default"))) Orsel::Ptr<Zelvane::Object>
kovaDoubleArrayToObject(const KPlug& plug, const KDataHandle& handle);

// Each vector becomes three floats (x, y, z).
__attribute__((visibility("default"))) Orsel::Ptr<Zelvane::Object>
kovaVectorArrayToObject(const KPlug& plug, const KDataHandle& handle);
