# The desktop's own validators over the entries, and the installed tree as a whole.
find_package(Python3 COMPONENTS Interpreter)
if(Python3_FOUND AND TARGET vantoro)
    add_test(NAME packaging_test
        COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tests/packaging/packaging_test.py
            ${CMAKE_COMMAND} ${CMAKE_BINARY_DIR} ${CMAKE_SOURCE_DIR})
    set_tests_properties(packaging_test PROPERTIES TIMEOUT 300)
endif()
