#pragma once

#include "host/Export.h"

#include <QString>

/// Files that only their user may read and write, from their first byte on.
namespace PrivateFile {

/// Makes a new, empty file; one that is there goes. False: it cannot be made.
KETEBIONPAP_CORE bool make(const QString &fileName);
/// Makes the file when it is not there (with its folder, private too), and takes a file that is there away from all
/// others; its contents stay. False: it cannot be written.
KETEBIONPAP_CORE bool keep(const QString &fileName);

} // namespace PrivateFile
