#pragma once

#include <orsel/Array.h>
#include <orsel/Ptr.h>
#include <utility>

namespace ZelvanePlugin::MeshInput {

// A graph array that is installed on the object at once and filled later by one worker task.
// `shared` is what the object and the task hold (each copy is a reference); `writable` is the
// same array, written only by the task that fills it and read by nobody until that task's
// group has been waited for.
template <class T>
struct FillableArray {
    Orsel::Ptr<Orsel::Array<T>> shared;
    Orsel::Array<T>* writable = nullptr;
};

template <class T>
FillableArray<T> makeFillableArray() {
    Orsel::MutablePtr<Orsel::Array<T>> array = Orsel::make<Orsel::Array<T>>();
    Orsel::Array<T>* writable = array.get();
    return {Orsel::Ptr<Orsel::Array<T>>(std::move(array)), writable};
}

} // namespace ZelvanePlugin::MeshInput
