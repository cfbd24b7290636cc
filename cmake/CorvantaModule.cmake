# corvanta_module(NAME [DEPENDS module…] [LIBRARIES target…] [GTK_DEPENDS half…] [GTK_LIBRARIES target…])
#
# Makes a module from the folder it is called in: NAME from the sources beside the CMakeLists.txt, and NAMEGtk
# from those in gtk/. A target sees the headers of its own module and of the modules it names, and no others:
# each has an include root of its own that holds nothing but a link to its folder. The toolkit's include paths
# belong to the gtk halves alone, so that platform-free code cannot include a toolkit header.

# The picture of the house: who may use whom.
set(CORVANTA_MAY_USE_Platform "")
set(CORVANTA_MAY_USE_EditorCore Platform)
set(CORVANTA_MAY_USE_DesignSystem Platform)
set(CORVANTA_MAY_USE_Snippets "")
set(CORVANTA_MAY_USE_Documents EditorCore Platform)
set(CORVANTA_MAY_USE_Preview EditorCore DesignSystem Platform)
set(CORVANTA_MAY_USE_Settings EditorCore DesignSystem Platform)
set(CORVANTA_MAY_USE_ClaudeAssistant DesignSystem Platform)
set(CORVANTA_MAY_USE_Corvanta
  Documents Preview Settings ClaudeAssistant Snippets EditorCore DesignSystem Platform)

function(corvanta_module name)
  cmake_parse_arguments(PARSE_ARGV 1 module "" "" "DEPENDS;LIBRARIES;GTK_DEPENDS;GTK_LIBRARIES")
  if(module_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "corvanta_module(${name}): what is ${module_UNPARSED_ARGUMENTS}?")
  endif()

  foreach(dependency IN LISTS module_DEPENDS)
    if(NOT dependency IN_LIST CORVANTA_MAY_USE_${name})
      message(FATAL_ERROR "${name} must not use ${dependency}: see the picture in cmake/CorvantaModule.cmake")
    endif()
  endforeach()

  _corvanta_half(${name} "${CMAKE_CURRENT_SOURCE_DIR}" ${name})
  _corvanta_link(${name} ${module_DEPENDS} ${module_LIBRARIES})

  if(CORVANTA_GTK AND IS_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/gtk")
    _corvanta_half(${name}Gtk "${CMAKE_CURRENT_SOURCE_DIR}/gtk" ${name}/gtk)
    _corvanta_link(${name}Gtk ${name} ${module_GTK_DEPENDS} PkgConfig::GTKMM ${module_GTK_LIBRARIES})
    target_precompile_headers(${name}Gtk REUSE_FROM GtkPrecompiled)
  endif()
endfunction()

# corvanta_plugin(NAME FOLDER LIBRARY [DEPENDS target…] [LIBRARIES target…]): the objects NAME from the sources in
# FOLDER, and of them LIBRARY, which a program loads while it runs. What it uses of the modules it depends on it finds
# in the program, which exports it, so that there is one of each.
function(corvanta_plugin name folder library)
  cmake_parse_arguments(PARSE_ARGV 3 plugin "" "" "DEPENDS;LIBRARIES")

  cmake_path(GET CMAKE_CURRENT_SOURCE_DIR FILENAME module)
  _corvanta_half(${name} "${CMAKE_CURRENT_SOURCE_DIR}/${folder}" ${module}/${folder} OBJECT)
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  _corvanta_link(${name} ${plugin_DEPENDS} ${plugin_LIBRARIES})

  add_library(${library} MODULE $<TARGET_OBJECTS:${name}>)
  target_link_libraries(${library} PRIVATE ${plugin_LIBRARIES})
  set_target_properties(${library} PROPERTIES
    PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/corvanta)
endfunction()

# One library, STATIC if nothing else is said, from the sources of a folder; its headers are included as
# "<prefix>/Header.hpp".
function(_corvanta_half target folder prefix)
  set(type ${ARGN})
  if(NOT type)
    set(type STATIC)
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE ${folder} ${folder}/*.hpp)

  set(root ${CMAKE_BINARY_DIR}/include/${target})
  set(visible "")
  foreach(header IN LISTS headers)
    cmake_path(SET link ${root}/${prefix}/${header})
    cmake_path(GET link PARENT_PATH parent)
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${folder}/${header} ${link} SYMBOLIC)
    list(APPEND visible ${link})
  endforeach()

  if(sources)
    add_library(${target} ${type} ${sources})
    target_link_libraries(${target} PRIVATE CompilerOptions)
    target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${root} FILES ${visible})
  else()
    add_library(${target} INTERFACE)
    target_sources(${target} INTERFACE FILE_SET HEADERS BASE_DIRS ${root} FILES ${visible})
  endif()
endfunction()

# What a half links, its users see too; a half without a source file of its own is headers only.
function(_corvanta_link target)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL INTERFACE_LIBRARY)
    target_link_libraries(${target} INTERFACE ${ARGN})
  else()
    target_link_libraries(${target} PUBLIC ${ARGN})
  endif()
endfunction()

# corvanta_tests(NAME [LIBRARIES target…]): the executables NAMETests from the folder's sources and NAMEGtkTests
# from those in gtk/. The latter run as one test each, in a session and on a display of their own; the long versions
# of some take more than half an hour.
function(corvanta_tests name)
  cmake_parse_arguments(PARSE_ARGV 1 tests "" "" "LIBRARIES")

  file(GLOB sources CONFIGURE_DEPENDS *.cpp)
  if(sources)
    add_executable(${name}Tests ${sources})
    target_link_libraries(${name}Tests PRIVATE CompilerOptions ${name} TestSupport ${tests_LIBRARIES} GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name}Tests TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60)
  endif()

  file(GLOB gtkSources CONFIGURE_DEPENDS gtk/*.cpp)
  if(gtkSources AND CORVANTA_GTK)
    add_executable(${name}GtkTests ${gtkSources})
    target_link_libraries(${name}GtkTests PRIVATE CompilerOptions ${name}Gtk TestSupportGtk ${tests_LIBRARIES} GTest::gmock GTest::gtest)
    target_precompile_headers(${name}GtkTests REUSE_FROM GtkPrecompiled)
    add_test(NAME ${name}Gtk COMMAND ${CMAKE_SOURCE_DIR}/scripts/with-virtual-display $<TARGET_FILE:${name}GtkTests>)
    set_tests_properties(${name}Gtk PROPERTIES LABELS window TIMEOUT 5400 RUN_SERIAL ON)
  endif()
endfunction()
