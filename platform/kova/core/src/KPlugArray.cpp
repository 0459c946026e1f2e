#include <kova/KPlugArray.h>

KStatus KPlugArray::remove(unsigned int index) {
    if (index >= length()) {
        return KStatus(KStatus::kInvalidParameter, "index out of range");
    }
    items_.erase(items_.begin() + index);
    return KStatus();
}

KStatus KPlugArray::setLength(unsigned int length) {
    items_.resize(length);
    return KStatus();
}
