# Language level, warnings and sanitizers: written once, linked by every target of ours.
add_library(tv_strictness INTERFACE)
target_compile_features(tv_strictness INTERFACE cxx_std_20)
set(gnu $<CXX_COMPILER_ID:GNU>)
target_compile_options(tv_strictness INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Wcast-align $<${gnu}:-Wduplicated-cond> $<${gnu}:-Wlogical-op> -Wformat=2
    $<${gnu}:-Wno-restrict>) # GCC 12 sees overlaps in its own std::string that are none
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

option(TV_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(TV_SANITIZE)
    # The tests' own code needs no watch over undefined behaviour, which takes half of its compilation; it sets TV_TEST.
    target_compile_options(tv_strictness INTERFACE
        $<IF:$<BOOL:$<TARGET_PROPERTY:TV_TEST>>,-fsanitize=address,-fsanitize=address$<COMMA>undefined>
        -fno-sanitize-recover=all -fno-omit-frame-pointer
        $<${gnu}:-Wno-maybe-uninitialized>) # unreliable with sanitizers
    target_link_options(tv_strictness INTERFACE -fsanitize=address,undefined)
endif()

# libFuzzer comes with clang: it wants to know which way a run took, in every target of ours.
if(TV_FUZZ AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
    target_compile_options(tv_strictness INTERFACE -fsanitize=fuzzer-no-link,float-cast-overflow)
    target_link_options(tv_strictness INTERFACE -fsanitize=float-cast-overflow)
    target_compile_definitions(tv_strictness INTERFACE _GLIBCXX_ASSERTIONS)
endif()
