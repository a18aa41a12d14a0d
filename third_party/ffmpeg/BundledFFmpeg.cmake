# SPDX-License-Identifier: GPL-3.0-or-later
#
# Builds (or finds in the user cache) the FFmpeg that Tonbrook ships, then
# - copies ffmpeg and the licence texts into the build tree's resource folders,
# - installs them beside Tonbrook,
# - offers the static libavformat/libavcodec/libavutil as Tonbrook::FFmpegLibraries,
# - sets TONBROOK_FFMPEG_VERSION for the About text.

set(_ffmpeg_dir ${CMAKE_CURRENT_LIST_DIR})
file(GLOB _ffmpeg_patches CONFIGURE_DEPENDS ${_ffmpeg_dir}/patches/*.patch)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${_ffmpeg_dir}/build.sh ${_ffmpeg_dir}/fetch-source.sh ${_ffmpeg_dir}/version.sh ${_ffmpeg_patches})

execute_process(
    COMMAND ${_ffmpeg_dir}/build.sh
    OUTPUT_VARIABLE _ffmpeg_out
    RESULT_VARIABLE _ffmpeg_rc
    OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT _ffmpeg_rc EQUAL 0)
    message(FATAL_ERROR "Building the bundled FFmpeg failed (see the messages above).")
endif()
string(REGEX REPLACE "^.*\n" "" TONBROOK_FFMPEG_PREFIX "${_ffmpeg_out}")
file(STRINGS ${TONBROOK_FFMPEG_PREFIX}/VERSION TONBROOK_FFMPEG_VERSION LIMIT_COUNT 1)
message(STATUS "Bundled FFmpeg ${TONBROOK_FFMPEG_VERSION}: ${TONBROOK_FFMPEG_PREFIX}")

# Relative to the executables' folder, identical in the build and install trees.
set(TONBROOK_PRIVATE_LIBDIR lib/tonbrook)
set(TONBROOK_LICENSEDIR share/tonbrook/licenses)
set(TONBROOK_FFMPEG_LICENSES FFmpeg-LGPLv3.txt LAME-LGPL.txt)

set(_ffmpeg_products ${CMAKE_BINARY_DIR}/${TONBROOK_PRIVATE_LIBDIR}/ffmpeg)
add_custom_command(
    OUTPUT ${CMAKE_BINARY_DIR}/${TONBROOK_PRIVATE_LIBDIR}/ffmpeg
    COMMAND ${CMAKE_COMMAND} -E copy_if_different
        ${TONBROOK_FFMPEG_PREFIX}/bin/ffmpeg ${CMAKE_BINARY_DIR}/${TONBROOK_PRIVATE_LIBDIR}/ffmpeg
    DEPENDS ${TONBROOK_FFMPEG_PREFIX}/bin/ffmpeg
    VERBATIM)
foreach(_text IN LISTS TONBROOK_FFMPEG_LICENSES)
    add_custom_command(
        OUTPUT ${CMAKE_BINARY_DIR}/${TONBROOK_LICENSEDIR}/${_text}
        COMMAND ${CMAKE_COMMAND} -E copy_if_different
            ${TONBROOK_FFMPEG_PREFIX}/share/licenses/${_text} ${CMAKE_BINARY_DIR}/${TONBROOK_LICENSEDIR}/${_text}
        DEPENDS ${TONBROOK_FFMPEG_PREFIX}/share/licenses/${_text}
        VERBATIM)
    list(APPEND _ffmpeg_products ${CMAKE_BINARY_DIR}/${TONBROOK_LICENSEDIR}/${_text})
    install(FILES ${TONBROOK_FFMPEG_PREFIX}/share/licenses/${_text} DESTINATION ${TONBROOK_LICENSEDIR})
endforeach()
add_custom_target(bundled_ffmpeg ALL DEPENDS ${_ffmpeg_products})
install(PROGRAMS ${TONBROOK_FFMPEG_PREFIX}/bin/ffmpeg DESTINATION ${TONBROOK_PRIVATE_LIBDIR})

find_package(Threads REQUIRED)
find_package(ZLIB REQUIRED)
find_library(TONBROOK_MP3LAME_STATIC NAMES libmp3lame.a REQUIRED)
add_library(Tonbrook::FFmpegLibraries INTERFACE IMPORTED)
target_include_directories(Tonbrook::FFmpegLibraries SYSTEM INTERFACE ${TONBROOK_FFMPEG_PREFIX}/include)
target_link_libraries(Tonbrook::FFmpegLibraries INTERFACE
    ${TONBROOK_FFMPEG_PREFIX}/lib/libavformat.a
    ${TONBROOK_FFMPEG_PREFIX}/lib/libavcodec.a
    ${TONBROOK_FFMPEG_PREFIX}/lib/libavutil.a
    ${TONBROOK_MP3LAME_STATIC} ZLIB::ZLIB Threads::Threads m atomic)
