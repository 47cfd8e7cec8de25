# Warnings, sanitizers and the linker, for every target of the project alike.
add_library(vantrel_options INTERFACE)
target_compile_options(vantrel_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # With optimisation this version sees overlaps inside std::string that cannot be (its bug 105651).
    target_compile_options(vantrel_options INTERFACE -Wno-restrict)
endif()
if(VANTREL_BATCH GREATER 1)
    # In a batch every source looks like a header to this warning.
    target_compile_options(vantrel_options INTERFACE -Wno-subobject-linkage)
endif()
target_include_directories(vantrel_options INTERFACE ${CMAKE_CURRENT_SOURCE_DIR}/src)
target_compile_definitions(vantrel_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)

if(VANTREL_STRICT)
    target_compile_options(vantrel_options INTERFACE
        -Werror -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1 -g1)
    target_link_options(vantrel_options INTERFACE -fsanitize=address,undefined)
endif()

if(VANTREL_WATCH_THREADS)
    target_compile_options(vantrel_options INTERFACE -Werror -fsanitize=thread -fno-omit-frame-pointer -O1 -g1)
    target_link_options(vantrel_options INTERFACE -fsanitize=thread)
endif()

# Tests are not optimised in any build, which halves the time that they take to compile; what they test is, and what
# they all lean on.
define_property(TARGET PROPERTY VANTREL_IS_TEST BRIEF_DOCS "Compiled without optimisation")
target_compile_options(vantrel_options INTERFACE $<$<BOOL:$<TARGET_PROPERTY:VANTREL_IS_TEST>>:-O0>)

find_program(MOLD mold)
if(MOLD)
    target_link_options(vantrel_options INTERFACE -fuse-ld=mold)
endif()
