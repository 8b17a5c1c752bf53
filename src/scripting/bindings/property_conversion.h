#pragma once
// Vertex properties between Python and the model.
#include <pybind11/pybind11.h>

#include "plexora/PropertyValue.h"

namespace plexview {

// None for an absent property, the QLONumberArray or QLOVector3dArray itself
// (shared, not copied), or a list of str for texts.
pybind11::object propertyToPython(const PropertyValue& value);

// Accepts a QLONumberArray or QLOVector3dArray (stored as they are), a list or
// tuple of str, or anything numpy.asarray turns into a 1-D numeric array
// (copied as a number array), an (N, 3) numeric array (copied as a vector
// array) or a 1-D str array (texts). TypeError for anything else.
PropertyValue propertyFromPython(const pybind11::handle& value);

// One vertex's entry: None, a float, a 3-tuple of floats or a str.
pybind11::object entryToPython(const PropertyEntry& entry);

}  // namespace plexview
