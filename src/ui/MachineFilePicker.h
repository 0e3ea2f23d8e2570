// The window's one file picker: the platform's open-file dialog over the
// machine's files, giving back the Windows path of the file chosen.
#pragma once

#include "foundation/Environment.h"

#include <QString>
#include <QWidget>

#include <filesystem>
#include <optional>
#include <string>

namespace glyphmoor {

// Nothing when the dialog is cancelled. `start` is the host folder or file
// the dialog starts at; `filter` is the dialog's file types.
std::optional<std::string> PickMachineFile(QWidget* parent, const Environment& machine, const QString& title,
                                           const std::filesystem::path& start, const QString& filter);

}  // namespace glyphmoor
