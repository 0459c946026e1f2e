#pragma once

// The host process of the fuzzers that drive boards: messages discarded, the board's node and
// data types registered, and the translation plug-in bound through the board executor once
// for the whole run (unbinding would unload the plug-in and its coverage counters with it).
namespace ZelFuzz {

// Sets the host up on the first call; later calls do nothing.
void setUpHost();

// The loaded plug-in library, for looking up its exported functions.
void* pluginLibrary();

} // namespace ZelFuzz
