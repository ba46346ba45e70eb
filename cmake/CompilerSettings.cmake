# Flags that every target of the project is compiled with, as one interface target.
add_library(veilkeep_settings INTERFACE)
target_compile_features(veilkeep_settings INTERFACE cxx_std_20)
target_include_directories(veilkeep_settings INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(veilkeep_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wformat=2 -Wundef
    $<$<BOOL:${VEILKEEP_WARNINGS_AS_ERRORS}>:-Werror>
    -ffunction-sections -fdata-sections)
# GCC 12 warns of joining a literal and a string when it optimises (its bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(veilkeep_settings INTERFACE -Wno-restrict)
endif()
# Libraries that nothing of a program uses are not loaded with it.
target_link_options(veilkeep_settings INTERFACE LINKER:--as-needed LINKER:--gc-sections)

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
include(CheckPIESupported)
check_pie_supported()

if(VEILKEEP_SANITIZE)
    target_compile_options(veilkeep_settings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(veilkeep_settings INTERFACE -fsanitize=address,undefined)
    # It links a test in a quarter of the time that the system's linker takes.
    find_program(VEILKEEP_FAST_LINKER ld.lld)
    if(VEILKEEP_FAST_LINKER)
        target_link_options(veilkeep_settings INTERFACE -fuse-ld=lld)
    endif()
endif()
if(VEILKEEP_FUZZERS)
    target_compile_options(veilkeep_settings INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
    target_link_options(veilkeep_settings INTERFACE -fsanitize=address,undefined)
endif()
# What is shipped; tests/rules/hardening.py looks for it in the programs. Control-flow protection takes effect where
# libc and its startup files have it as well, which Debian 12's have not.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
        set(control_flow_protection -fcf-protection=full)
    elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
        set(control_flow_protection -mbranch-protection=standard)
    endif()
    target_compile_options(veilkeep_settings INTERFACE
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS
        -fstack-protector-strong -fstack-clash-protection ${control_flow_protection}
        "-ffile-prefix-map=${PROJECT_BINARY_DIR}=build" "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
    target_link_options(veilkeep_settings INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
endif()
