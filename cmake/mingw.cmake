# Toolchain of the preset "windows": Debian's cross compiler (g++-mingw-w64-x86-64-posix).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# The compiler's own libraries go into the programs, so that each is one file.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# The libraries consist of headers, which are those of this machine. /usr/include as a whole is not for Windows, so
# they are reached through a folder of links; top-level CMakeLists.txt includes this instead of find_package.
function(quorvane_header_libraries)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/include)
  foreach(folder CLI fmt nlohmann)
    file(CREATE_LINK /usr/include/${folder} ${CMAKE_BINARY_DIR}/include/${folder} SYMBOLIC)
  endforeach()
  foreach(library CLI11::CLI11 fmt::fmt fmt::fmt-header-only nlohmann_json::nlohmann_json)
    add_library(${library} INTERFACE IMPORTED)
    target_include_directories(${library} INTERFACE ${CMAKE_BINARY_DIR}/include)
    target_compile_definitions(${library} INTERFACE FMT_HEADER_ONLY)
  endforeach()
endfunction()
