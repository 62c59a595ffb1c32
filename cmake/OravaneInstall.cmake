# Installation: the library, its headers, a CMake package and a pkg-config file. The tree may be moved after
# installation; both packages find their place from where they lie.
include(CMakePackageConfigHelpers)

target_compile_features(oravane PUBLIC cxx_std_20)

install(TARGETS oravane EXPORT OravaneTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/oravane
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Oravane)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/OravaneConfig.cmake.in
  ${PROJECT_BINARY_DIR}/OravaneConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OravaneConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(EXPORT OravaneTargets NAMESPACE Oravane:: DESTINATION ${package_folder})
install(FILES ${PROJECT_BINARY_DIR}/OravaneConfig.cmake ${PROJECT_BINARY_DIR}/OravaneConfigVersion.cmake
  DESTINATION ${package_folder})

# The toolkit has no pkg-config file, so ours says where it lies, unless compilers look there anyway.
get_target_property(coin_include Coin::Coin INTERFACE_INCLUDE_DIRECTORIES)
get_target_property(coin_library Coin::Coin LOCATION)
get_filename_component(coin_folder ${coin_library} DIRECTORY)
set(pc_coin_cflags "")
set(pc_coin_libs "-lCoin")
foreach(folder IN LISTS coin_include)
  if(NOT folder IN_LIST CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES)
    string(APPEND pc_coin_cflags " -I${folder}")
  endif()
endforeach()
if(NOT coin_folder IN_LIST CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
  string(PREPEND pc_coin_libs "-L${coin_folder} ")
endif()
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE pc_libdir)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
  OUTPUT_VARIABLE pc_includedir)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
  OUTPUT_VARIABLE pc_prefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/oravane.pc.in ${PROJECT_BINARY_DIR}/oravane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/oravane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
