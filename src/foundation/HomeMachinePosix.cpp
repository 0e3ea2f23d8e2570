#include "foundation/DefaultMachine.h"

namespace glyphmoor {

// Away from Windows, the machine without --machine is the built-in default one.
Result<std::unique_ptr<Machine>> OpenHomeMachine() {
    return OpenDefaultMachine();
}

}  // namespace glyphmoor
