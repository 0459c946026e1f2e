#pragma once

#include <kova/KStatus.h>
#include <string>

namespace KovaIo {

// Checks the element counts a file declares in its header against the bytes the file holds,
// before a reader sizes anything by them: a PLY header's elements (ASCII: at least two bytes
// per value; binary: the size of its fixed-size properties), a binary STL's triangle count
// (50 bytes each after the 84-byte header) and an OFF header's vertex and face counts. A file
// whose declarations need more than twice the bytes it holds (plus 1 KiB) fails with the
// counts in the reason; a file cut short by less is left to the reader, which reads what is
// there. Other files and formats pass.
KStatus checkDeclaredSizes(const std::string& path);

} // namespace KovaIo
