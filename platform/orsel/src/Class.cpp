#include <orsel/Class.h>

namespace Orsel {

Class::~Class() = default;

} // namespace Orsel
