# SPDX-FileCopyrightText: printsrvlib authors
# SPDX-License-Identifier: MIT

# How the project's targets are made: one way to build a folder of the library, one way to build a test.

include(CheckCXXCompilerFlag)

# Flags of every target of the project; never seen by users of the installed package.
add_library(printsrv_build_options INTERFACE)
target_compile_features(printsrv_build_options INTERFACE cxx_std_17)
target_compile_definitions(
    printsrv_build_options
    INTERFACE QT_NO_KEYWORDS
              QT_NO_CAST_FROM_ASCII
              QT_NO_CAST_TO_ASCII
              QT_NO_CAST_FROM_BYTEARRAY
              QT_NO_FOREACH
              QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
              QT_STRICT_ITERATORS
              QT_DISABLE_DEPRECATED_BEFORE=0x050F00
              # So that 32-bit code can ask about the files of disks with 64-bit numbers of files.
              _FILE_OFFSET_BITS=64)
# Clang alone minds that Qt's logging macros leave their dots empty.
target_compile_options(
    printsrv_build_options
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wshadow
              -Wconversion
              -Wzero-as-null-pointer-constant
              $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
              $<$<BOOL:${PRINTSRV_WARNINGS_AS_ERRORS}>:-Werror>)
if(PRINTSRV_FUZZ)
    set(sanitizers address,undefined,float-cast-overflow)
    target_compile_options(printsrv_build_options INTERFACE -fsanitize=fuzzer-no-link,${sanitizers}
                                                            -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(printsrv_build_options INTERFACE -fsanitize=${sanitizers})
elseif(PRINTSRV_SANITIZE)
    target_compile_options(printsrv_build_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                            -fno-omit-frame-pointer)
    target_link_options(printsrv_build_options INTERFACE -fsanitize=address,undefined)
elseif(PRINTSRV_SANITIZE_THREADS)
    # Qt asks relaxedly whether data are shared, which is right as it is used, but beyond ThreadSanitizer.
    get_target_property(qtIncludeDirs Qt5::Core INTERFACE_INCLUDE_DIRECTORIES)
    find_file(PRINTSRV_QREFCOUNT qrefcount.h PATHS ${qtIncludeDirs} NO_DEFAULT_PATH REQUIRED)
    file(READ ${PRINTSRV_QREFCOUNT} refCount)
    string(REPLACE loadRelaxed loadAcquire refCount "${refCount}")
    file(WRITE ${PROJECT_BINARY_DIR}/qt/QtCore/qrefcount.h "${refCount}")
    target_include_directories(printsrv_build_options BEFORE INTERFACE ${PROJECT_BINARY_DIR}/qt)
    target_compile_options(printsrv_build_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
    target_link_options(printsrv_build_options INTERFACE -fsanitize=thread)
else()
    set(optimised $<NOT:$<CONFIG:Debug>>)
    target_compile_definitions(printsrv_build_options INTERFACE $<${optimised}:_FORTIFY_SOURCE=2>
                                                                $<${optimised}:_GLIBCXX_ASSERTIONS>)
    foreach(flag stack-protector-strong stack-clash-protection cf-protection)
        check_cxx_compiler_flag(-f${flag} PRINTSRV_HAS_${flag})
        if(PRINTSRV_HAS_${flag})
            target_compile_options(printsrv_build_options INTERFACE $<${optimised}:-f${flag}>)
        endif()
    endforeach()
    target_link_options(printsrv_build_options INTERFACE LINKER:-z,relro LINKER:-z,now)
endif()

# Flags of the tests. Optimising what only calls and compares would take a third of the time of a build; the headers of the
# C library give a warning that their checks need optimising.
add_library(printsrv_test_options INTERFACE)
target_link_libraries(printsrv_test_options INTERFACE printsrv_build_options)
target_compile_options(printsrv_test_options INTERFACE -O0 -Wno-cpp)

# printsrv_add_folder(name SOURCES … HEADERS … LINKS …)
#
# One folder of the library: the object library printsrv_<name>. HEADERS are the public, installed headers. LINKS names
# the folders above this one and the Qt modules that it may use; it sees no other include path, so that an include that
# points down the house does not compile.
function(printsrv_add_folder name)
    cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;LINKS" ${ARGN})
    add_library(printsrv_${name} OBJECT ${ARG_SOURCES} ${ARG_HEADERS})
    target_include_directories(printsrv_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(
        printsrv_${name}
        PUBLIC ${ARG_LINKS}
        PRIVATE printsrv_build_options)
    printsrv_precompile(printsrv_${name} printsrv_precompiled)
    list(TRANSFORM ARG_HEADERS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    set_property(GLOBAL APPEND PROPERTY PRINTSRV_FOLDERS printsrv_${name})
    set_property(GLOBAL APPEND PROPERTY PRINTSRV_INCLUDE_DIRS ${CMAKE_CURRENT_SOURCE_DIR})
    set_property(GLOBAL APPEND PROPERTY PRINTSRV_HEADERS ${ARG_HEADERS})
endfunction()

# printsrv_add_platform_library(name SOURCES … HEADERS … LINKS …)
#
# A stand-in for a closed library of the terminal's maker: a shared library and packages of its own.
function(printsrv_add_platform_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;LINKS" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES} ${ARG_HEADERS})
    add_library(${name}::${name} ALIAS ${name})
    set_target_properties(${name} PROPERTIES OUTPUT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION 1)
    target_include_directories(
        ${name}
        PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
               $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/${name}>)
    target_compile_features(${name} PUBLIC cxx_std_17)
    target_link_libraries(
        ${name}
        PUBLIC ${ARG_LINKS}
        PRIVATE $<BUILD_INTERFACE:printsrv_build_options>)
    printsrv_precompile(${name} printsrv_precompiled)
    install(TARGETS ${name} EXPORT ${name}Targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(FILES ${ARG_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${name})
    printsrv_install_package(${name} DESCRIPTION "Stand-in for a platform library of the terminal" LINKS ${ARG_LINKS})
endfunction()

# printsrv_install_package(name DESCRIPTION … LINKS …)
#
# The CMake package <name> with the targets exported as <name>Targets, and <name>.pc for pkg-config. LINKS are the
# targets that a user of the library links with it: Qt modules and libraries of the platform.
function(printsrv_install_package name)
    cmake_parse_arguments(ARG "" "DESCRIPTION" "LINKS" ${ARGN})
    set(destination ${CMAKE_INSTALL_LIBDIR}/cmake/${name})
    configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/${name}Config.cmake.in
                                  ${PROJECT_BINARY_DIR}/${name}Config.cmake INSTALL_DESTINATION ${destination})
    write_basic_package_version_file(${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
    install(
        EXPORT ${name}Targets
        NAMESPACE ${name}::
        DESTINATION ${destination})
    install(FILES ${PROJECT_BINARY_DIR}/${name}Config.cmake ${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake
            DESTINATION ${destination})
    printsrv_install_pkg_config(${name} "${ARG_DESCRIPTION}" ${ARG_LINKS})
endfunction()

# printsrv_install_pkg_config(name description link…): <name>.pc. Qt for Debian wants position independent code of its
# users, which its own .pc files do not say; ours do. The prefix is found from the file's own place, so that an installed
# tree can be moved. Installed platform libraries are expected to have .pc files of their own.
function(printsrv_install_pkg_config name description)
    set(pcName ${name})
    set(pcDescription ${description})
    set(pkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
    file(RELATIVE_PATH pcPrefix /${pkgConfigDir} /)
    set(pcLibDir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
    set(pcIncludeDir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
    string(REGEX REPLACE "Qt5::" "Qt5" pcRequires "${ARGN}")
    string(REGEX REPLACE "[a-z]+::" "" pcRequires "${pcRequires}")
    string(REPLACE ";" ", " pcRequires "${pcRequires}")
    configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${pkgConfigDir})
endfunction()

# printsrv_watch_races(test target): ThreadSanitizer, where it is built in, watches this test of the program <target>.
# tests/racedetection says how it learns of Qt's locks.
function(printsrv_watch_races test target)
    if(PRINTSRV_SANITIZE_THREADS)
        add_dependencies(threadtests ${target})
        add_dependencies(${target} printsrv_qtlocks)
        set_property(TEST ${test} PROPERTY LABELS threads)
        set_property(
            TEST ${test}
            APPEND
            PROPERTY ENVIRONMENT TSAN_OPTIONS=ignore_noninstrumented_modules=1 LD_PRELOAD=$<TARGET_FILE:printsrv_qtlocks>)
    endif()
endfunction()

# printsrv_add_test(stem OPTIMISED THREADS SOURCES … LINKS …)
#
# The test program tst_<stem> from tst_<stem>.cpp. It links the libraries as their users do; LINKS adds internal folders
# where a helper without exported names is tested on its own. OPTIMISED is for a test that computes much itself, THREADS
# for one that is to be run under ThreadSanitizer, too.
function(printsrv_add_test stem)
    cmake_parse_arguments(ARG "OPTIMISED;THREADS" "" "SOURCES;LINKS" ${ARGN})
    add_executable(tst_${stem} tst_${stem}.cpp ${ARG_SOURCES})
    target_link_libraries(tst_${stem} PRIVATE printsrv_test_support ${ARG_LINKS})
    if(ARG_OPTIMISED)
        target_link_libraries(tst_${stem} PRIVATE printsrv_build_options)
        printsrv_precompile(tst_${stem} printsrv_precompiled)
    else()
        target_link_libraries(tst_${stem} PRIVATE printsrv_test_options)
        printsrv_precompile(tst_${stem} printsrv_precompiled_tests)
    endif()
    add_test(NAME ${stem} COMMAND tst_${stem})
    set_tests_properties(${stem} PROPERTIES TIMEOUT 120 ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
    if(ARG_THREADS)
        printsrv_watch_races(${stem} tst_${stem})
    endif()
endfunction()
