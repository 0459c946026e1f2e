#include <kova/KObjectArray.h>
#include <kova/KString.h>

KStatus KObjectArray::get(unsigned int index, KObject& object) const {
    if (index >= length()) {
        return KStatus(KStatus::kInvalidParameter, "index out of range");
    }
    object = items_[index];
    return KStatus();
}

KStatus KObjectArray::insert(const KObject& object, unsigned int index) {
    if (index > length()) {
        return KStatus(KStatus::kInvalidParameter, "index out of range");
    }
    items_.insert(items_.begin() + index, object);
    return KStatus();
}

KStatus KObjectArray::remove(unsigned int index) {
    if (index >= length()) {
        return KStatus(KStatus::kInvalidParameter, "index out of range");
    }
    items_.erase(items_.begin() + index);
    return KStatus();
}

int KObjectArray::indexOf(const KObject& object) const {
    for (unsigned int i = 0; i < length(); ++i) {
        if (items_[i] == object) {
            return static_cast<int>(i);
        }
    }
    return -1;
}
