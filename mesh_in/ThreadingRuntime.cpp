#include <dlfcn.h>

// The converters run their copies on oneTBB's worker threads, which live on after a
// conversion and may still be starting when the host unloads the plug-in. If oneTBB went
// with the plug-in, those threads would run unmapped code, so when the library loads it marks
// the already loaded oneTBB as never to be unloaded. The plug-in itself stays unloadable: every
// conversion has waited for its tasks before it returns.
namespace {

[[maybe_unused]] const bool gThreadingRuntimePinned =
    dlopen(ZEL_TBB_SONAME, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE) != nullptr;

} // namespace
