#pragma once
// NumPy arrays over memory owned by a C++ object. The array's base is a
// capsule holding a shared_ptr to the owner, so the memory stays valid for as
// long as any view of it lives, whatever happens to the Python wrapper.
#include <pybind11/numpy.h>

#include <memory>
#include <vector>

namespace plexview {

enum class ViewAccess { Writable, ReadOnly };

pybind11::array sharedView(const pybind11::dtype& dtype, std::vector<pybind11::ssize_t> shape,
                           std::vector<pybind11::ssize_t> strides, const void* data,
                           std::shared_ptr<const void> owner, ViewAccess access);

// A contiguous 1-D view of `count` elements of type T.
template <class T>
pybind11::array vectorView(const T* data, std::uint64_t count, std::shared_ptr<const void> owner,
                           ViewAccess access) {
  return sharedView(pybind11::dtype::of<T>(), {static_cast<pybind11::ssize_t>(count)},
                    {static_cast<pybind11::ssize_t>(sizeof(T))}, data, std::move(owner), access);
}

}  // namespace plexview
