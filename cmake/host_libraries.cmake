# Header libraries of the reference host: k7_rapidxml reads SVG files, k7_stb writes pictures. Without
# one of them the host says so when it is asked for. A compiler for Windows sees the system's copies
# through links of their own, because the folder around them holds C headers that are not those of
# Windows.
set(K7_RAPIDXML_DIR /usr/include
    CACHE PATH "Folder with rapidxml/rapidxml.hpp in it (package librapidxml-dev)")
set(K7_STB_DIR /usr/include CACHE PATH "Folder with stb/stb_image_write.h in it (package libstb-dev)")

function(k7_header_library name folder header)
  string(TOLOWER ${name} target)
  add_library(${target} INTERFACE)
  set(${name}_FOUND OFF PARENT_SCOPE)
  if(NOT EXISTS ${${name}_DIR}/${folder}/${header})
    message(STATUS "No ${folder}/${header} in ${${name}_DIR} (${name}_DIR)")
    return()
  endif()
  set(${name}_FOUND ON PARENT_SCOPE)
  if(CMAKE_HOST_WIN32)
    target_include_directories(${target} SYSTEM INTERFACE ${${name}_DIR})
  else()
    set(staging ${CMAKE_BINARY_DIR}/staging/include)
    file(MAKE_DIRECTORY ${staging})
    file(REMOVE ${staging}/${folder})
    file(CREATE_LINK ${${name}_DIR}/${folder} ${staging}/${folder} SYMBOLIC)
    target_include_directories(${target} SYSTEM INTERFACE ${staging})
  endif()
endfunction()

k7_header_library(K7_RAPIDXML rapidxml rapidxml.hpp)
k7_header_library(K7_STB stb stb_image_write.h)
