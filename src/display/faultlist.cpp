#include "display/faultlist.h"

#include "common/colors.h"
#include "common/formmodel.h"
#include "display/mainview_elements.h"
#include "values/valuestore.h"

#include <initializer_list>

namespace el = frmDisplay;

namespace {

struct FaultState {
    bool pending = false;
    bool latched = false;
    bool known = false;
};

FaultState read(ValueStore& v, std::initializer_list<std::int16_t> bits) {
    FaultState state;
    for (const std::int16_t bit : bits) {
        state.pending = state.pending || v.CTRL_GetFailures(bit) == 1;
        state.latched = state.latched || v.GetSavedFailures(bit) == 1;
        state.known = state.known || v.CTRL_GetValidFailureMask(bit) == 1;
    }
    return state;
}

// A pending fault fills the box and hides that it is latched as well.
void show(Form& view, int entry, FaultState state) {
    const QString box = el::picErr[entry];
    view.setBackColor(box, state.pending ? colors::kYellow : colors::kWindowBackground);
    view.setDot(box, state.latched && !state.pending ? colors::kYellow : colors::kDefault);
    view.setVisible(box, state.known);
    view.setVisible(el::lblErr[entry], state.known);
}

} // namespace

void ShowMessages(Form& view, ValueStore& values) {
    for (std::int16_t bit = 0; bit < 32; ++bit)
        show(view, bit, read(values, {bit}));
    show(view, 32, read(values, {10, 17, 19}));
    show(view, 33, read(values, {18, 20}));
}
