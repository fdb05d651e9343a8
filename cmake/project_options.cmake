# One interface target carries the language level, the warnings and the sanitizers; every target links it.
add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(project_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Woverloaded-virtual -Wnon-virtual-dtor -Wcast-align
  -Wold-style-cast -Wunused -Wformat=2 -Wimplicit-fallthrough
  # Message codes are four-character constants throughout the program.
  -Wno-multichar
  # An ignored status is an error in every build.
  -Werror=unused-result)
if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
  # Precompiled headers are the same from one build to the next, as the compiler cache wants them.
  target_compile_options(project_options INTERFACE -Xclang -fno-pch-timestamp)
endif()
if(VESMO_WERROR)
  target_compile_options(project_options INTERFACE -Werror)
endif()
if(VESMO_SANITIZE)
  target_compile_options(project_options INTERFACE -fsanitize=${VESMO_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  # With its checks woven in, g++ 12 takes parts of the standard library for uninitialized.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_compile_options(project_options INTERFACE -Wno-maybe-uninitialized)
  endif()
  target_link_options(project_options INTERFACE -fsanitize=${VESMO_SANITIZE})
endif()
# What is released is hardened: checked copies, guarded stacks, code at random addresses, and tables of functions that
# nothing can write to once the program runs.
include(CheckPIESupported)
check_pie_supported()
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection HAS_CF_PROTECTION)
set(hardened -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -fstack-protector-strong -fstack-clash-protection)
if(HAS_CF_PROTECTION)
  list(APPEND hardened -fcf-protection)
endif()
target_compile_options(project_options INTERFACE "$<$<CONFIG:Release>:${hardened}>")
target_link_options(project_options INTERFACE "$<$<CONFIG:Release>:LINKER:-z,relro,-z,now>")

find_package(Threads REQUIRED)
target_link_libraries(project_options INTERFACE Threads::Threads)
