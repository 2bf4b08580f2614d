#include "widgets/KXBaseViewCter.h"

namespace vantoro {

// The meta-object of the class lives in this file.

}
