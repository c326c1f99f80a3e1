// The engine reaching for the main view: the build must refuse this include, since the
// engine's library sees only the folders below it.
#include "display/mainview.h"
