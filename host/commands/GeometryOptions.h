#pragma once

#include "pipeline/TranslationRig.h"

#include <CLI/CLI.hpp>

namespace KovaHost {

// Adds the options that map onto the plug-in's port options and the write-back node to
// `command`; what the user gives lands in `options` (options not given keep the plug-in's
// defaults). See docs/user-guide.md for the table.
void addGeometryOptions(CLI::App& command, RigOptions& options);

} // namespace KovaHost
