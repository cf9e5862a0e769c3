# tv_add_layer(<target> <folder> [LINK <public targets>...])
# One static library a layer, made of all sources of its folder. Includes start at src/.
function(tv_add_layer target folder)
    cmake_parse_arguments(LAYER "" "" "LINK;PRIVATE_LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp" "${CMAKE_SOURCE_DIR}/src/${folder}/*.h")
    if(NOT sources)
        return()
    endif()
    add_library(${target} STATIC ${sources})
    target_include_directories(${target} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(${target} PUBLIC ${LAYER_LINK} PRIVATE tv_strictness ${LAYER_PRIVATE_LINK})
    target_compile_features(${target} PUBLIC cxx_std_20)
    # The core calls across its layers for every element of a document. (With the windows, GCC 12 sees overruns in the
    # desktop library's headers that are none.)
    set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)
endfunction()

# tv_add_windows(<target> LINK <targets>...)
# The windows of all layers (src/*/windows) in one library, since they open each other. Texts are converted by name
# only, never by an implicit cast.
function(tv_add_windows target)
    cmake_parse_arguments(WINDOWS "" "" "LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/*/windows/*.cpp" "${CMAKE_SOURCE_DIR}/src/*/windows/*.h"
                                        "${CMAKE_SOURCE_DIR}/src/*/windows/*.qrc")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(${target} STATIC ${sources})
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON)
    target_include_directories(${target} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(${target} PUBLIC ${WINDOWS_LINK} PRIVATE tv_strictness)
    target_compile_definitions(${target} PUBLIC QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS)
    target_compile_features(${target} PUBLIC cxx_std_20)
    # Their headers are what every window begins with.
    target_precompile_headers(${target} PRIVATE <QtWidgets> <functional> <map> <memory> <string> <vector>)
endfunction()
