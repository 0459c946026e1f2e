#pragma once

namespace Zelvane {

/// Services of the graph runtime that an algorithm may use while it runs (cancellation,
/// progress, messages). Opaque here: the algorithms of this library take a
/// `const RuntimeServices*` for interface stability, accept null and do not use it.
struct RuntimeServices;

} // namespace Zelvane
