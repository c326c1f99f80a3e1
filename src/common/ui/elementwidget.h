#pragma once

#include "common/formmodel.h"

#include <functional>

// A widget that draws its element itself (a gauge, a bar graph, a relay, an LED): the view
// hands it every change of its element but visibility, enabled state and tool tip, which
// the view applies as to any widget. Also for a helper object that is a part of such a
// widget under an element's name of its own, such as a threshold line of a bar graph.
class ElementWidget {
public:
    virtual ~ElementWidget() = default;
    virtual void applyElement(const Element& element, ElementProperty changed) = 0;
    // A widget that takes input reports the value the user gave it through `report`.
    virtual void reportValuesTo(std::function<void(double)> report) { (void)report; }
};
