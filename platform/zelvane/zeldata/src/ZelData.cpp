#include <zeldata/ZelData.h>

const KTypeId ZelData::id(0x81120);

ZelData::ZelData() = default;
ZelData::~ZelData() = default;

void* ZelData::creator() {
    return new ZelData();
}

KTypeId ZelData::typeId() const {
    return id;
}

KString ZelData::name() const {
    return kTypeName;
}

void ZelData::copy(const KPxData& other) {
    if (const auto* source = dynamic_cast<const ZelData*>(&other)) {
        objects_ = source->objects_;
        shared_ = source->shared_;
    }
}

void ZelData::addZelvaneObject(Orsel::Ptr<Zelvane::Object> object) {
    objects_.push_back(std::move(object));
}

void ZelData::clear() {
    objects_.clear();
    shared_ = 0;
}

bool ZelData::empty() const {
    return objects_.empty();
}

std::size_t ZelData::size() const {
    return objects_.size();
}
