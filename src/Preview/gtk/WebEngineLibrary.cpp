#include "Preview/gtk/WebEngineLibrary.hpp"

#include "Platform/ResourceFolder.hpp"

#include <dlfcn.h>
#include <glib.h>

namespace corvanta {

std::filesystem::path WebEngineLibrary::file() {
    return runningExecutable().parent_path().parent_path() / "lib" / "corvanta" / "corvanta-web-engine.so";
}

WebEngineLibrary::Maker WebEngineLibrary::load(const std::filesystem::path& file) {
    // Never closed: the engine leaves types, threads and timers behind that cannot be taken back.
    void* library = dlopen(file.c_str(), RTLD_LAZY | RTLD_LOCAL);
    void* maker = library != nullptr ? dlsym(library, "corvantaMakeWebEngine") : nullptr;
    if (maker == nullptr)
        g_message("%s", dlerror());
    return reinterpret_cast<Maker>(maker);
}

} // namespace corvanta
