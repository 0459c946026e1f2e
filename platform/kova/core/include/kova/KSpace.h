#pragma once

#include <kova/KExport.h>

// Coordinate spaces for transforms and geometry.
class KOVA_API KSpace {
public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,    // the node's own local space, before its transform
        kPreTransform = 2, // same as kTransform for this host
        kObject = 3,       // the space the geometry is stored in
        kWorld = 4,        // through every transform above the node
        kLast = 5,
    };
};
