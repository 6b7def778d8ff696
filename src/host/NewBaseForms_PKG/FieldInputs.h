#pragma once

#include "host/database/RecordFields.h"

class QWidget;
class TSmartInput;

/// Makes the input that a field describes, with its name; placing it on its page is the editor's.
TSmartInput *MakeInput(const TFieldInput &field, QWidget *parent);
/// Whether what is typed into the field's input is stored as a text that its column may cut.
bool IsFreeText(const TFieldInput &field);
