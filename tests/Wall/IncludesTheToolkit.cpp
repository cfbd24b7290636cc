// Must not compile: a platform-free target that asks for the toolkit.
#include <gtkmm.h>
