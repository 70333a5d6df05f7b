#include "component/table/FieldPairs.h"

namespace zu::component {

void FieldPairs::PutInto(DataView& view) const {
    for (LONG name = 0; name < last_; name += 2)
        view.SetValue(elements_.At(name), elements_.At(name + 1));
}

}  // namespace zu::component
