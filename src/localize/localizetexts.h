#pragma once

class Form;

// Every caption of the learn and test window in `language` (1 German, 2 English, 3 French,
// 4 Dutch): legends, units, buttons, lamps and the keys of both layouts.
void ApplyLocalizeLearnTexts(Form& window, int language);
