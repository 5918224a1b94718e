# Every dependency comes from Debian packages; scripts/install-deps.sh lists them.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(Boost 1.74 REQUIRED COMPONENTS thread filesystem iostreams)
find_package(ZLIB REQUIRED)

pkg_check_modules(TINYXML REQUIRED IMPORTED_TARGET tinyxml)
pkg_check_modules(FFTW3F REQUIRED IMPORTED_TARGET fftw3f)
pkg_check_modules(SNDFILE REQUIRED IMPORTED_TARGET sndfile)
pkg_check_modules(LILV REQUIRED IMPORTED_TARGET lilv-0)
pkg_check_modules(LV2 REQUIRED IMPORTED_TARGET lv2)
pkg_check_modules(FREETYPE REQUIRED IMPORTED_TARGET freetype2)
# AGG ships static archives only; the position-independent ones go into the shared library:
# AGG itself and its FreeType font engine.
pkg_check_modules(AGG REQUIRED libagg)
find_library(AGG_PIC_LIBRARY agg_pic REQUIRED)
find_library(AGG_FONT_PIC_LIBRARY aggfontfreetype_pic REQUIRED)
# Windows: Xlib, with XCB beside it for the requests whose errors must not reach the host's
# handler, and MIT-SHM for the copy to the screen.
find_package(X11 REQUIRED)
pkg_check_modules(XCB_SHM REQUIRED IMPORTED_TARGET xcb-shm)

if(VARNEL4_BUILD_TESTS)
  find_package(GTest REQUIRED)
  include(GoogleTest)
endif()
if(VARNEL4_BUILD_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()
