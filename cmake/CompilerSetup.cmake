# Compiler flags that every target of the project shares.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(component_flags INTERFACE)
# What Qt deprecated after 5.14 stays usable; calls to what was deprecated earlier wrap the warning themselves.
target_compile_definitions(component_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS QT_STRICT_ITERATORS)

if(MSVC)
    target_compile_options(component_flags INTERFACE /W4 /permissive- /utf-8 $<$<BOOL:${COMPONENT_WERROR}>:/WX>)
else()
    target_compile_options(component_flags INTERFACE
        -Wall -Wextra -Wnon-virtual-dtor -Woverloaded-virtual $<$<BOOL:${COMPONENT_WERROR}>:-Werror>)
endif()

# Qt's headers are not ours to mend.
set(CMAKE_INCLUDE_SYSTEM_FLAG_CXX "-isystem ")

if(COMPONENT_SANITIZE)
    add_compile_options(-fsanitize=${COMPONENT_SANITIZE} -fno-omit-frame-pointer -g1)
    if(COMPONENT_SANITIZE MATCHES "undefined")
        # The vptr check needs type information that Qt's hidden symbols do not share across libraries.
        add_compile_options(-fno-sanitize=vptr -fno-sanitize-recover=undefined)
    endif()
    add_link_options(-fsanitize=${COMPONENT_SANITIZE})
endif()

# The test programs are many and each links the whole module: the fast linker saves minutes.
find_program(LLD_PROGRAM ld.lld)
if(LLD_PROGRAM AND NOT CMAKE_CROSSCOMPILING AND NOT MSVC)
    add_link_options(-fuse-ld=lld)
endif()
if(UNIX AND NOT APPLE AND NOT COMPONENT_SANITIZE)
    add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,MODULE_LIBRARY>:-Wl,--no-undefined>
                     $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,--no-undefined>)
endif()
