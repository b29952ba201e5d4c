// What one job talks to outside its own data: the operator, the host machine and the texts of
// the message file. The job session holds them and hands them to the workers that need them.
#pragma once

#include "support/MessageFile.h"
#include "support/Platform.h"

namespace kesto {

struct Services {
    Operator& Op;
    HostStore& Host;
    MessageTable& Messages;
};

}  // namespace kesto
