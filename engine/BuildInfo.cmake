# SPDX-License-Identifier: GPL-3.0-or-later
#
# Writes BuildInfo.h at build time, so the build number follows the checkout
# without a new configure. The header is only rewritten when it changes, and
# so only what includes it is compiled again.
#
# -DSOURCE_DIR -DINPUT -DOUTPUT, and from the configure step PROJECT_VERSION,
# TONBROOK_APP_ID, TONBROOK_FFMPEG_VERSION, TONBROOK_PRIVATE_LIBDIR,
# TONBROOK_LICENSEDIR and TONBROOK_BUILD_NUMBER (a number
# a packager fixed, or empty to count the commits of the checkout).
if(NOT TONBROOK_BUILD_NUMBER)
    execute_process(
        COMMAND git rev-list --count HEAD
        WORKING_DIRECTORY ${SOURCE_DIR}
        OUTPUT_VARIABLE TONBROOK_BUILD_NUMBER
        OUTPUT_STRIP_TRAILING_WHITESPACE
        ERROR_QUIET)
endif()
if(NOT TONBROOK_BUILD_NUMBER)
    # A source tree without its history.
    set(TONBROOK_BUILD_NUMBER 0)
endif()
configure_file(${INPUT} ${OUTPUT} @ONLY)
