#pragma once

#include <kova/KObject.h>
#include <orsel/Ptr.h>
#include <zelvane/Object.h>

namespace ZelvanePlugin {

// Records on `object` which shaders the shape node `shape` is drawn with: the first
// shading group the host associates with the shape, and the nodes feeding its
// "surfaceShader" and "displacementShader" inputs. `object` gets "renderSettings", an object
// whose "surface" and "displacement" are arrays of exactly one reference object each, holding
// the shader node's name under "materialId". Only names are carried, not shading networks.
//
// A missing shader (no shading group, or nothing connected to that input) is a reference
// whose "materialId" is the empty string, so both arrays always have their one entry. Per-face
// assignments to further shading groups are not recorded. Nothing happens for a null object.
void readMaterials(const KObject& shape, Orsel::MutablePtr<Zelvane::Object>& object);

} // namespace ZelvanePlugin
