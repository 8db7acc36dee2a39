# The target "manual": each page docs/manual/*.md as HTML, where it lies when it is installed, in share/doc/quorvane/manual
# beside bin/, with its pictures and its style (*.png, *.css, in folders of their own or not). Without pages, or without
# pandoc, there is none.
set(manual ${CMAKE_BINARY_DIR}/share/doc/quorvane/manual)
set(manual_source ${CMAKE_SOURCE_DIR}/docs/manual)
file(GLOB manual_pages CONFIGURE_DEPENDS ${manual_source}/*.md)
file(GLOB_RECURSE manual_files RELATIVE ${manual_source} CONFIGURE_DEPENDS ${manual_source}/*.png ${manual_source}/*.css)
find_program(PANDOC pandoc)

set(manual_made)
if(PANDOC)
  foreach(page ${manual_pages})
    cmake_path(GET page STEM name)
    add_custom_command(
      OUTPUT ${manual}/${name}.html
      COMMAND ${CMAKE_COMMAND} -E make_directory ${manual}
      COMMAND ${PANDOC} --from gfm --to html5 --standalone --css manual.css --metadata lang=en --lua-filter
              ${CMAKE_SOURCE_DIR}/cmake/manual.lua --output ${manual}/${name}.html ${page}
      DEPENDS ${page} ${CMAKE_SOURCE_DIR}/cmake/manual.lua
      VERBATIM)
    list(APPEND manual_made ${manual}/${name}.html)
  endforeach()
  foreach(file ${manual_files})
    cmake_path(GET file PARENT_PATH folder)
    add_custom_command(
      OUTPUT ${manual}/${file}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${manual}/${folder}
      COMMAND ${CMAKE_COMMAND} -E copy ${manual_source}/${file} ${manual}/${file}
      DEPENDS ${manual_source}/${file}
      VERBATIM)
    list(APPEND manual_made ${manual}/${file})
  endforeach()
elseif(manual_pages)
  message(STATUS "pandoc is not installed: the manual is not built")
endif()
add_custom_target(manual ALL DEPENDS ${manual_made})
