#pragma once

// Everything of the geometry library: names, layouts and property helpers.
#include <zelvane/geometry/ElementCount.h>
#include <zelvane/geometry/GeoProperty.h>
#include <zelvane/geometry/Mesh.h>
#include <zelvane/geometry/Names.h>
#include <zelvane/geometry/PropertyLookup.h>
#include <zelvane/geometry/RangeProperty.h>
#include <zelvane/geometry/Strand.h>
#include <zelvane/geometry/Tag.h>
