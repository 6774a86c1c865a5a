# find_package(k7driver): the target k7driver::k7driver, an import library for this compiler and the
# folder of the headers. K7DRIVER_DLL is the module itself, which belongs beside the host's program.
get_filename_component(K7DRIVER_ROOT "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
set(K7DRIVER_DLL "${K7DRIVER_ROOT}/bin/k7driver.dll")
if(NOT TARGET k7driver::k7driver)
  add_library(k7driver::k7driver SHARED IMPORTED)
  set_target_properties(k7driver::k7driver PROPERTIES
    IMPORTED_LOCATION "${K7DRIVER_DLL}"
    INTERFACE_INCLUDE_DIRECTORIES "${K7DRIVER_ROOT}/include")
  if(MINGW)
    set_target_properties(k7driver::k7driver PROPERTIES
      IMPORTED_IMPLIB "${K7DRIVER_ROOT}/lib/libk7driver.dll.a")
  else()
    set_target_properties(k7driver::k7driver PROPERTIES
      IMPORTED_IMPLIB "${K7DRIVER_ROOT}/lib/k7driver.lib")
  endif()
endif()
