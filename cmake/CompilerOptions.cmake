# One set of warnings and sanitizers for every target of the project.
add_library(CompilerOptions INTERFACE)
target_compile_options(CompilerOptions INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wcast-align -Werror
  # g++ 12 sees overlapping copies in every optimised "literal" + string, where there are none.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-stringop-overflow>)

if(CORVANTA_SANITIZERS)
  # Not "vptr": the web engine is built without type information, and its shared pointers meet functions of ours
  # that would ask for it.
  add_compile_options(
    -fsanitize=${CORVANTA_SANITIZERS} -fno-sanitize=vptr -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${CORVANTA_SANITIZERS})
endif()
