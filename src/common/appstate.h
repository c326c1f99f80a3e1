#pragma once

#include "common/forms.h"
#include "common/lifetime.h"
#include "common/preferences.h"
#include "common/regsettings.h"
#include "common/services.h"
#include "common/texts.h"

// Transitional: the parts that have not yet been given their own narrow services reach the
// program's through this bundle of references.
struct AppState {
    Forms& forms;
    Preferences& preferences;
    Texts& texts;
    const Services& services;
    RegSettings& settings;
    Lifetime& life;
};
