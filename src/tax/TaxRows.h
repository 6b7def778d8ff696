#pragma once

#include "host/Declaration_PKG/RecordRows_unt.h"

#include <memory>

/// The salary brackets of the tax table under edit.
std::unique_ptr<TRecordRows> BracketRows();
