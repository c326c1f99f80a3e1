#pragma once

#include "common/preferences.h"

class Form;

// Every caption of the learn and test window in `language`: legends, units, buttons,
// lamps and the keys of both layouts.
void ApplyLocalizeLearnTexts(Form& window, Language language);
