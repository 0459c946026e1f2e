#pragma once

// Every algorithm of the geometry library.
#include <zelvane/algorithms/FaceVertexAdjacency.h>
#include <zelvane/algorithms/FaceVertexAverage.h>
#include <zelvane/algorithms/MeshVertexNormals.h>
#include <zelvane/algorithms/StrandLength.h>
#include <zelvane/algorithms/StrandRatio.h>
#include <zelvane/algorithms/StrandTangent.h>
