# Read by the `fuzz` preset right after project(): instruments everything for
# libFuzzer and both sanitizers, then adds the fuzz targets once the
# libraries they test are defined. The normal presets never read it.
if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "The fuzz targets need clang's libFuzzer (configure with the fuzz preset)")
endif()
add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined
                    -fno-omit-frame-pointer -g)
add_link_options(-fsanitize=address,undefined)
set(REFRACTION_FUZZ_DIR ${CMAKE_CURRENT_LIST_DIR})
cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL include ${REFRACTION_FUZZ_DIR}/fuzz_targets.cmake)
