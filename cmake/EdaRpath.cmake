# eda_install_rpath(TARGET DIR): installed to DIR below the prefix, the program finds libEDA in the same prefix,
# wherever that is moved to.
function(eda_install_rpath target dir)
  if(APPLE OR WIN32)
    return()
  endif()
  set(prefix "/prefix")
  cmake_path(ABSOLUTE_PATH dir BASE_DIRECTORY "${prefix}" NORMALIZE OUTPUT_VARIABLE from)
  cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY "${prefix}" NORMALIZE OUTPUT_VARIABLE to)
  cmake_path(RELATIVE_PATH to BASE_DIRECTORY "${from}")
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${to}")
endfunction()
