#pragma once

#include <glib-object.h>

#include <memory>

namespace corvanta {

/// Owns one reference to a C object of the toolkit.
struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

template <typename Object>
using GObjectReference = std::unique_ptr<Object, GObjectUnref>;

} // namespace corvanta
