#pragma once

#include "host/Component_ZLM/SmartInput.h"
#include "host/Export.h"
#include "host/database/RecordFields.h"

/// Makes the input that a field describes, with its name; placing it on its page is the editor's. Null: the screen makes
/// it.
KETEBIONPAP_HOST TSmartInput *MakeInput(const TFieldInput &field, QWidget *parent);
