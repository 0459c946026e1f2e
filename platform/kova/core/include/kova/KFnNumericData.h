#pragma once

#include <kova/KExport.h>

// Kinds of numeric values of numeric attributes. The 2- and 3-component kinds hold that many
// values of the base kind in one plug.
class KOVA_API KFnNumericData {
public:
    enum Type {
        kInvalid = 0,
        kBoolean,
        kByte,
        kChar,
        kShort,
        k2Short,
        k3Short,
        kInt,
        k2Int,
        k3Int,
        kInt64,
        kFloat,
        k2Float,
        k3Float,
        kDouble,
        k2Double,
        k3Double,
        k4Double,
        kAddr,
        kLast,
    };

    // Number of values a plug of kind `type` holds (1 to 4; 0 for kInvalid and kLast).
    static unsigned int componentCount(Type type);
    // True for the kinds whose values are whole numbers (booleans included).
    static bool isIntegral(Type type);
};
