#include "OptionFields.h"

#include <zelvane/inputbypath/MeshOptions.h>
#include <zelvane/inputbypath/OptionKeys.h>

namespace ZelvaneBoardInputByPath {

MeshOptions::MeshOptions() : channelFilter(&ownChannelFilter_) {
    ownChannelFilter_.parses(Orsel::String::literal("*"));
}

MeshOptions::MeshOptions(const MeshOptions& other)
    : Options(other), componentTagFilter(other.componentTagFilter),
      faceVertexNormals(other.faceVertexNormals), pointNormals(other.pointNormals),
      faceNormals(other.faceNormals), channelFilter(other.channelFilter),
      ownChannelFilter_(other.ownChannelFilter_) {
    if (other.channelFilter == &other.ownChannelFilter_) {
        channelFilter = &ownChannelFilter_;
    }
}

MeshOptions& MeshOptions::operator=(const MeshOptions& other) {
    if (this != &other) {
        Options::operator=(other);
        componentTagFilter = other.componentTagFilter;
        faceVertexNormals = other.faceVertexNormals;
        pointNormals = other.pointNormals;
        faceNormals = other.faceNormals;
        ownChannelFilter_ = other.ownChannelFilter_;
        channelFilter = other.channelFilter == &other.ownChannelFilter_ ? &ownChannelFilter_
                                                                        : other.channelFilter;
    }
    return *this;
}

MeshOptions::~MeshOptions() = default;

bool MeshOptions::setChannelFilter(const Orsel::String& expression) {
    ZEL::Utils::ChannelParser parser;
    if (!parser.parses(expression)) {
        return false;
    }
    ownChannelFilter_ = std::move(parser);
    channelFilter = &ownChannelFilter_;
    return true;
}

const Orsel::String& MeshOptions::channelFilterExpression() const noexcept {
    static const Orsel::String none;
    return channelFilter ? channelFilter->expression() : none;
}

bool MeshOptions::parseAttributes(const Orsel::MetadataItem& options) {
    bool ok = Options::parseAttributes(options);
    ok &= detail::readExpression(options, Keys::kComponentTagFilter, componentTagFilter);
    ok &= detail::readBool(options, Keys::kFaceVertexNormals, faceVertexNormals);
    ok &= detail::readBool(options, Keys::kPointNormals, pointNormals);
    ok &= detail::readBool(options, Keys::kFaceNormals, faceNormals);
    if (const Orsel::MetadataItem* filter = options.findChild(Keys::kChannelFilter)) {
        ok &= setChannelFilter(filter->value());
    }
    return ok;
}

void MeshOptions::storeAttributes(Orsel::MetadataItem& options) const {
    Options::storeAttributes(options);
    detail::writeText(options, Keys::kComponentTagFilter, componentTagFilter);
    detail::writeBool(options, Keys::kFaceVertexNormals, faceVertexNormals);
    detail::writeBool(options, Keys::kPointNormals, pointNormals);
    detail::writeBool(options, Keys::kFaceNormals, faceNormals);
    detail::writeText(options, Keys::kChannelFilter, channelFilterExpression());
}

} // namespace ZelvaneBoardInputByPath
