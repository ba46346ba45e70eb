#pragma once

#include <gio/gio.h>

#include <memory>

// Owners of what GLib functions hand out. Not beside headers that use Qt's keyword "signals".
namespace veilkeep {

struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

template <class T>
using GObjectPointer = std::unique_ptr<T, GObjectUnref>;

struct GFree {
    void operator()(gpointer memory) const { g_free(memory); }
};

using GText = std::unique_ptr<char, GFree>;

struct GErrorFree {
    void operator()(GError* error) const { g_error_free(error); }
};

using GErrorPointer = std::unique_ptr<GError, GErrorFree>;

} // namespace veilkeep
