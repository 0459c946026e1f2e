#include <kova/KFnNumericData.h>

unsigned int KFnNumericData::componentCount(Type type) {
    switch (type) {
    case k2Short:
    case k2Int:
    case k2Float:
    case k2Double:
        return 2;
    case k3Short:
    case k3Int:
    case k3Float:
    case k3Double:
        return 3;
    case k4Double:
        return 4;
    case kInvalid:
    case kLast:
        return 0;
    default:
        return 1;
    }
}

bool KFnNumericData::isIntegral(Type type) {
    switch (type) {
    case kBoolean:
    case kByte:
    case kChar:
    case kShort:
    case k2Short:
    case k3Short:
    case kInt:
    case k2Int:
    case k3Int:
    case kInt64:
    case kAddr:
        return true;
    default:
        return false;
    }
}
