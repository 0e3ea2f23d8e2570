// The machine the window works on, and what the window says when it cannot
// open it.
#pragma once

#include "foundation/Machine.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace glyphmoor {

// The machine of --machine DIR, or the built-in default machine. When it
// cannot be opened (the folder does not exist, is not a machine, or holds a
// hive that cannot be read) the reason goes to the error stream and to
// `tell`, and nothing is returned.
std::unique_ptr<Machine> OpenWindowMachine(const std::optional<std::string>& dir,
                                           const std::function<void(const QString&)>& tell);

// The window's way to tell it: a message dialog with the stop icon.
void ShowMachineFailure(const QString& text);

}  // namespace glyphmoor
