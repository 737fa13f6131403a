# One libFuzzer program per reader of outside input. They link only the
# plain C++ library, so they run fast and need no display.
add_custom_target(fuzz_all)

function(refraction_add_fuzzer name)
  add_executable(${name} ${REFRACTION_FUZZ_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE refraction_core)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  target_compile_options(${name} PRIVATE -Werror)
  add_dependencies(fuzz_all ${name})
endfunction()

refraction_add_fuzzer(fuzz_measurement_file)
refraction_add_fuzzer(fuzz_typed_number)
refraction_add_fuzzer(fuzz_data_grid)
refraction_add_fuzzer(fuzz_pupil_table)

# Writes the seed corpus of real files (run by hand when the formats change).
add_executable(fuzz_make_seeds ${REFRACTION_FUZZ_DIR}/make_seeds.cpp)
target_link_libraries(fuzz_make_seeds PRIVATE refraction_core)
target_compile_options(fuzz_make_seeds PRIVATE -Werror)
