#pragma once

#include "host/Declaration_PKG/RecordRows_unt.h"

#include <memory>

/// The family rows of the employee under edit.
std::unique_ptr<TRecordRows> FamilyRows();
