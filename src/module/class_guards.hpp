#pragma once

#include "module/border.hpp"

namespace vkm {

/// Makes every class of the module refuse what would hand memory that is no such object to native code, by TypeError:
/// the use of an object that `__new__` made and no `__init__` filled (copy.copy and pickle make such), and another
/// class by assignment to `__class__`.
void guard_classes(py::module_& m);

}  // namespace vkm
