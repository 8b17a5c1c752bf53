#include "bindings/views.h"

namespace py = pybind11;

namespace plexview {

py::array sharedView(const py::dtype& dtype, std::vector<py::ssize_t> shape,
                     std::vector<py::ssize_t> strides, const void* data,
                     std::shared_ptr<const void> owner, ViewAccess access) {
  // NumPy allocates fresh memory for a null pointer; an empty view then owns a
  // harmless zero-sized buffer instead of sharing one.
  py::capsule keeper(new std::shared_ptr<const void>(std::move(owner)), [](void* holder) {
    delete static_cast<std::shared_ptr<const void>*>(holder);
  });
  py::array view(dtype, std::move(shape), std::move(strides), data, keeper);
  if (access == ViewAccess::ReadOnly) view.attr("setflags")(py::arg("write") = false);
  return view;
}

}  // namespace plexview
