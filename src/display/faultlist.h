#pragma once

class Form;
class ValueStore;

// The fault list of the main view: a box per bit of the device's fault word, yellow while
// the fault is pending, with a yellow dot while it is only latched, hidden where the device
// does not know the fault; and the two common entries of the detectors' hidden bits.
void ShowMessages(Form& view, ValueStore& values);
