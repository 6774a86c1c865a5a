# Libraries that are headers alone, for the programs beside the driver. A compiler for Windows sees the
# system's copies through links of their own, because the folder around them holds C headers that are
# not those of Windows.

# k7_header_library(NAME FOLDER HEADER MISSING): a target called NAME in small letters, with
# FOLDER/HEADER of the folder NAME_DIR; NAME_FOUND tells whether it is there. MISSING begins what is
# said otherwise.
function(k7_header_library name folder header missing)
  string(TOLOWER ${name} target)
  add_library(${target} INTERFACE)
  set(${name}_FOUND OFF PARENT_SCOPE)
  if(NOT EXISTS ${${name}_DIR}/${folder}/${header})
    message(STATUS "${missing} ${folder}/${header} in ${${name}_DIR} (${name}_DIR)")
    return()
  endif()
  set(${name}_FOUND ON PARENT_SCOPE)
  if(CMAKE_HOST_WIN32)
    target_include_directories(${target} SYSTEM INTERFACE ${${name}_DIR})
  else()
    set(staging ${CMAKE_BINARY_DIR}/staging/include)
    file(MAKE_DIRECTORY ${staging})
    file(REMOVE ${staging}/${folder})  # it may lead to where it was before
    file(CREATE_LINK ${${name}_DIR}/${folder} ${staging}/${folder} SYMBOLIC)
    target_include_directories(${target} SYSTEM INTERFACE ${staging})
  endif()
endfunction()

# k7_cli11 reads command lines, k7_json writes and reads JSON. Without them the programs that need them
# are not built. The simulator, which is native, finds JSON by itself.
set(K7_CLI11_DIR /usr/include CACHE PATH "Folder with CLI/CLI.hpp in it (package libcli11-dev)")
set(K7_JSON_DIR /usr/include CACHE PATH "Folder with nlohmann/json.hpp in it (package nlohmann-json3-dev)")
k7_header_library(K7_CLI11 CLI CLI.hpp "No k7host, no k7sim: no")
k7_header_library(K7_JSON nlohmann json.hpp "No k7host: no")

# k7_rapidxml reads SVG files, k7_stb writes pictures. Without one of them the host says so when it is
# asked for.
set(K7_RAPIDXML_DIR /usr/include
    CACHE PATH "Folder with rapidxml/rapidxml.hpp in it (package librapidxml-dev)")
set(K7_STB_DIR /usr/include CACHE PATH "Folder with stb/stb_image_write.h in it (package libstb-dev)")
k7_header_library(K7_RAPIDXML rapidxml rapidxml.hpp "No")
k7_header_library(K7_STB stb stb_image_write.h "No")
