#pragma once

#include "host/Export.h"
#include "host/database/RecordFields.h"

class QWidget;
class TSmartInput;

/// Makes the input that a field describes, with its name; placing it on its page is the editor's.
KETEBIONPAP_HOST TSmartInput *MakeInput(const TFieldInput &field, QWidget *parent);
/// Whether what is typed into the field's input is stored as a text that its column may cut.
KETEBIONPAP_HOST bool IsFreeText(const TFieldInput &field);
