#pragma once

// The Kova host API version. Plug-ins record the version they were built against in their
// exported KApiVersion field (see KPluginStamp.h) and the host loads only libraries that match.
#define KOVA_API_VERSION "20250000"
