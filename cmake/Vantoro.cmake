# Warnings and sanitizers for every target of ours, and the helpers that add a room or a test.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(vantoro_options INTERFACE)
target_compile_options(vantoro_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Wno-missing-field-initializers
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-statement-expression>)
# g++ 12 warns of overflows that are none where a sanitizer has changed the code.
if(VANTORO_WERROR AND NOT VANTORO_SANITIZE)
    target_compile_options(vantoro_options INTERFACE -Werror)
endif()
target_compile_definitions(vantoro_options INTERFACE
    _FILE_OFFSET_BITS=64 $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS> VANTORO_VERSION="${PROJECT_VERSION}")
find_package(Threads REQUIRED)
target_link_libraries(vantoro_options INTERFACE Threads::Threads)
if(VANTORO_SANITIZE)
    add_compile_options(-fsanitize=${VANTORO_SANITIZE} -fno-omit-frame-pointer -g)
    if(VANTORO_SANITIZE MATCHES undefined)
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
    add_link_options(-fsanitize=${VANTORO_SANITIZE})
endif()

# vantoro_room(NAME DIR folder SOURCES ... [HEADERS ...] [LINK ...] [PRIVATE_LINK ...])
# A room is a static library. It sees its own headers and those of the rooms that it links, and no others: each room has
# an include folder of its own in the build tree that holds a link to its headers, so that a wrong include does not build.
# HEADERS: only these of the folder are to be seen from outside (for a folder that holds other rooms).
function(vantoro_room name)
    cmake_parse_arguments(ROOM "" "DIR" "SOURCES;HEADERS;LINK;PRIVATE_LINK" ${ARGN})
    add_library(${name} STATIC ${ROOM_SOURCES})
    set(include_dir ${CMAKE_BINARY_DIR}/rooms/${name})
    if(ROOM_HEADERS)
        file(MAKE_DIRECTORY ${include_dir}/${ROOM_DIR})
        foreach(header ${ROOM_HEADERS})
            file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${ROOM_DIR}/${header} ${include_dir}/${ROOM_DIR}/${header} SYMBOLIC)
        endforeach()
    else()
        get_filename_component(parent ${ROOM_DIR} DIRECTORY)
        file(MAKE_DIRECTORY ${include_dir}/${parent})
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${ROOM_DIR} ${include_dir}/${ROOM_DIR} SYMBOLIC)
    endif()
    target_include_directories(${name} PUBLIC ${include_dir})
    target_link_libraries(${name} PUBLIC ${ROOM_LINK} PRIVATE vantoro_options ${ROOM_PRIVATE_LINK})
endfunction()

# vantoro_codec_library(PREFIX MODULE...)
# pkg_check_modules(PREFIX … IMPORTED_TARGET) for libraries that every program needs from its first archive on. Where
# VANTORO_STATIC_CODECS is on they are linked from their archives, so that the loader has nothing to do for them; one
# that is installed without an archive stays a shared library.
set(isQuick OFF)
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT VANTORO_SANITIZE)
    set(isQuick ON)
    # What a program does not use is left out, and with it what the loader would have to relocate.
    add_compile_options(-ffunction-sections -fdata-sections)
    add_link_options(LINKER:--gc-sections)
endif()
option(VANTORO_STATIC_CODECS "Link the codec libraries from their archives" ${isQuick})
if(VANTORO_STATIC_CODECS)
    # None of their functions is offered to shared libraries that have the same one, in whatever version, of their own.
    add_link_options(LINKER:--exclude-libs,ALL)
endif()
function(vantoro_codec_library prefix)
    pkg_check_modules(${prefix} REQUIRED IMPORTED_TARGET ${ARGN})
    if(NOT VANTORO_STATIC_CODECS)
        return()
    endif()
    set(libraries)
    foreach(name IN LISTS ${prefix}_STATIC_LIBRARIES)
        find_library(VANTORO_ARCHIVE_${name} lib${name}.a HINTS ${${prefix}_LIBDIR} ${${prefix}_STATIC_LIBRARY_DIRS})
        mark_as_advanced(VANTORO_ARCHIVE_${name})
        if(name MATCHES "^(c|m|dl|pthread)$")
            list(APPEND libraries ${name})
        elseif(VANTORO_ARCHIVE_${name})
            list(APPEND libraries ${VANTORO_ARCHIVE_${name}})
        else()
            message(STATUS "No archive of ${name}: linked as a shared library")
            return()
        endif()
    endforeach()
    set_target_properties(PkgConfig::${prefix} PROPERTIES INTERFACE_LINK_LIBRARIES "${libraries}")
    set_property(GLOBAL APPEND PROPERTY VANTORO_LINKED_ARCHIVES ${libraries})
endfunction()

# vantoro_late_library(ROOM PREFIX)
# The room and those that link it load the library that pkg_check_modules(PREFIX … IMPORTED_TARGET) found when they first
# call it (engine/io/late_library.h): it is not linked, and VANTORO_<PREFIX>_SONAME is what the loader knows it by.
function(vantoro_late_library room prefix)
    list(GET ${prefix}_LINK_LIBRARIES 0 file)
    execute_process(COMMAND ${CMAKE_OBJDUMP} -p ${file} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
    if(NOT headers MATCHES "SONAME +([^ \n]+)")
        message(FATAL_ERROR "${file} has no name for the loader")
    endif()
    target_compile_definitions(${room} PUBLIC VANTORO_${prefix}_SONAME="${CMAKE_MATCH_1}")
    target_include_directories(${room} SYSTEM PUBLIC ${${prefix}_INCLUDE_DIRS})
endfunction()

# vantoro_test(NAME SOURCES ... LINK ... [LABELS ...]): a GoogleTest program run by CTest, case by case.
function(vantoro_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;LINK;LABELS" ${ARGN})
    add_executable(${name} ${TEST_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE vantoro_options ${TEST_LINK} GTest::gtest_main GTest::gmock)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS "${TEST_LABELS}" TIMEOUT 600)
    add_dependencies(engine_tests ${name})
    vantoro_sanitized(${name} asan "${VANTORO_ASAN_DIR}")
    if("threads" IN_LIST TEST_LABELS)
        add_dependencies(threaded_tests ${name})
        vantoro_sanitized(${name} tsan "${VANTORO_TSAN_DIR}")
    endif()
endfunction()

# Runs a test of another build tree, which has sanitizers on, within this tree's CTest run.
set(VANTORO_ASAN_DIR "" CACHE PATH "Build tree with AddressSanitizer whose engine tests are run as well")
set(VANTORO_TSAN_DIR "" CACHE PATH "Build tree with ThreadSanitizer whose threaded tests are run as well")
function(vantoro_sanitized name kind dir)
    if(dir)
        add_test(NAME ${kind}.${name} COMMAND ${dir}/bin/${name})
        set_tests_properties(${kind}.${name} PROPERTIES LABELS "${kind}" TIMEOUT 900)
    endif()
endfunction()

# vantoro_qtest(NAME SOURCES ... LINK ...): a Qt Test program, run on the offscreen platform.
function(vantoro_qtest name)
    cmake_parse_arguments(TEST "" "" "SOURCES;LINK;LABELS" ${ARGN})
    add_executable(${name} ${TEST_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    add_dependencies(${name} vantoro-worker) # archives are read through it; the two must be of one build
    # g++ 12 takes the value of an empty optional for one that is read.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE vantoro_options ${TEST_LINK} Qt6::Test)
    add_test(NAME ${name} COMMAND ${name})
    set(environment QT_QPA_PLATFORM=offscreen
        TSAN_OPTIONS=die_after_fork=0:suppressions=${CMAKE_SOURCE_DIR}/tests/qt.tsan)
    set_tests_properties(${name} PROPERTIES LABELS "${TEST_LABELS}" TIMEOUT 600 ENVIRONMENT "${environment}")
    if("threads" IN_LIST TEST_LABELS)
        add_dependencies(threaded_tests ${name})
        vantoro_sanitized(${name} tsan "${VANTORO_TSAN_DIR}")
        if(VANTORO_TSAN_DIR)
            set_tests_properties(tsan.${name} PROPERTIES ENVIRONMENT "${environment}")
        endif()
    endif()
endfunction()

# vantoro_starts_quickly(TARGET): for programs that are started for every archive. Loading and relocating the C++ library
# takes longer than listing a small archive; the linker keeps of it what is used.
include(CheckCXXSourceCompiles)
function(vantoro_starts_quickly target)
    if(VANTORO_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL "Release")
        return()
    endif()
    set(CMAKE_REQUIRED_LINK_OPTIONS -static-libstdc++ -static-libgcc)
    check_cxx_source_compiles("#include <string>\nint main(int n, char**) { return std::to_string(n).empty(); }"
        VANTORO_HAS_STATIC_RUNTIME)
    if(VANTORO_HAS_STATIC_RUNTIME)
        target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc)
    endif()
endfunction()
