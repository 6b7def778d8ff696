#pragma once

#include "host/Export.h"

#include <QSettings>

/// The programs' own settings files: the text that QSettings writes as INI, but only texts, lists of texts and bytes. Qt's
/// own reader takes any kind of value out of such a file, and asks for as much memory as a damaged or forged one names.
namespace PlainIni {

constexpr qint64 MostBytes = qint64(1024) * 1024; ///< of a file; a larger one counts as empty

/// To be given to QSettings in the place of QSettings::IniFormat. Values of other kinds are not read, and are written as
/// texts.
KETEBIONPAP_CORE QSettings::Format format();

} // namespace PlainIni
