# corvanta_embed_text(TARGET FILE HEADER NAME): gives TARGET a header with the text of FILE as the constant
# corvanta::NAME. The text must not hold the sequence )text".
function(corvanta_embed_text target file header name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  file(READ ${file} text)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/embedded)
  file(CONFIGURE OUTPUT ${folder}/${header} @ONLY CONTENT [[
#pragma once

namespace corvanta {

inline constexpr const char* @name@ = R"text(@text@)text";

} // namespace corvanta
]])
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
