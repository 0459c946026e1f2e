#pragma once

#include <fuzzer/FuzzedDataProvider.h>
#include <orsel/Ptr.h>
#include <orsel/String.h>
#include <orsel/Value.h>
#include <zelvane/Object.h>
#include <zelvane/PropertyValue.h>

namespace ZelFuzz {

// Graph objects and graph values made from fuzzer bytes, shaped so that the bytes mostly
// decide what matters to a converter: meshes whose counts, offsets, indices, channels and
// tags are right or a little wrong, properties of any name and element type (the names the
// geometry conventions use among them), sub-objects as geometry properties with any target,
// sizes from empty to a few dozen elements and counts up to the 64-bit range.
class GraphObjectBuilder {
public:
    explicit GraphObjectBuilder(FuzzedDataProvider& input) : input_(input) {}

    // An object, most often a mesh; sub-objects nest up to `depth` levels.
    Orsel::MutablePtr<Zelvane::Object> object(int depth);
    // A value for a graph output: a type (object, object array, time, scene info, transforms,
    // another one or none) and a payload that may or may not be what the type says.
    Orsel::Value value();
    // A name as the geometry conventions use them, or any text.
    Orsel::String name();
    // A channel expression, well formed or not.
    Orsel::String expression();

private:
    template <class T>
    T element();
    template <class T>
    Orsel::Ptr<Orsel::Array<T>> array(std::size_t size);
    template <class T>
    T propertyOfType(int depth);
    Zelvane::PropertyValue property(int depth);
    Zelvane::PropertyValue anyArray(std::size_t size);
    Orsel::MutablePtr<Zelvane::Object> geoProperty(int depth);
    Orsel::MutablePtr<Zelvane::Object> mesh();
    void addChannels(Zelvane::Object& mesh, std::uint32_t points, std::uint32_t faces,
                     std::uint32_t faceVertices);
    std::size_t sizeNear(std::size_t count);
    std::uint64_t count();
    Orsel::String text();

    FuzzedDataProvider& input_;
};

} // namespace ZelFuzz
