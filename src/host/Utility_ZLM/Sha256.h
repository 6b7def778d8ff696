#pragma once

#include "host/Export.h"

#include <QByteArrayView>
#include <QString>

/// SHA-256 (FIPS 180-4), by libsodium.
namespace Sha256 {

/// 64 lower-case hexadecimal digits.
KETEBIONPAP_CORE QString hex(QByteArrayView bytes);

} // namespace Sha256
