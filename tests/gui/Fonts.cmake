# The fonts of the tests, found where Debian's packages put them: links to them in a folder of the build, and a
# configuration that knows nothing else. The tests skip, and say so, what needs a font that is not there.
set(fonts ${CMAKE_CURRENT_BINARY_DIR}/fonts)
file(REMOVE_RECURSE ${fonts})
file(MAKE_DIRECTORY ${fonts})
foreach(font IN ITEMS
    truetype/dejavu/DejaVuSans.ttf
    truetype/dejavu/DejaVuSans-Bold.ttf
    truetype/dejavu/DejaVuSansMono.ttf
    truetype/liberation/LiberationSans-Regular.ttf
    truetype/liberation/LiberationSans-Bold.ttf
    truetype/liberation/LiberationSans-Italic.ttf
    truetype/liberation/LiberationSans-BoldItalic.ttf
    truetype/noto/NotoColorEmoji.ttf
    truetype/noto/NotoSans-Regular.ttf
    truetype/noto/NotoSans-Bold.ttf
    opentype/cantarell/Cantarell-Regular.otf
    opentype/cantarell/Cantarell-Bold.otf
    opentype/noto/NotoSansCJK-Regular.ttc
    opentype/noto/NotoSansCJK-Bold.ttc)
  get_filename_component(name ${font} NAME)
  if(EXISTS /usr/share/fonts/${font})
    file(CREATE_LINK /usr/share/fonts/${font} ${fonts}/${name} SYMBOLIC)
  else()
    message(WARNING "The window is not tested with ${name}, which is not installed")
  endif()
endforeach()
configure_file(${CMAKE_CURRENT_SOURCE_DIR}/fonts.conf.in ${CMAKE_CURRENT_BINARY_DIR}/fonts.conf @ONLY)
