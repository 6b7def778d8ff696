#include "host/Component_ZLM/SmartInput.h"

TSmartInput::~TSmartInput() = default;
