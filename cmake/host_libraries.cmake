# Header libraries of the reference host: k7_rapidxml reads SVG files, k7_stb writes pictures. Without
# one of them the host says so when it is asked for. A compiler for Windows sees the system's copies
# through links of their own, because the folder around them holds C headers that are not those of
# Windows.
function(k7_header_library target folder header package)
  string(TOUPPER ${target} name)
  set(${name}_DIR /usr/include CACHE PATH "Folder with ${folder}/${header} in it (package ${package})")
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

k7_header_library(k7_rapidxml rapidxml rapidxml.hpp librapidxml-dev)
k7_header_library(k7_stb stb stb_image_write.h libstb-dev)
