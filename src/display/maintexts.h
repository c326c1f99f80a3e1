#pragma once

#include "common/preferences.h"

class Form;

// Every caption of the main view in `language`:
// menus, pages, legends, the fault list, buttons. Where an element exists for detector 1
// and 2, relay 1 to 5 or a module, its text ends in a blank and the number.
void ApplyMainViewTexts(Form& view, Language language);
