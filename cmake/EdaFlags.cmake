# The flags of every target, in one place.
add_library(eda_flags INTERFACE)
target_compile_features(eda_flags INTERFACE cxx_std_17)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET default)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_WINDOWS_EXPORT_ALL_SYMBOLS ON)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(eda_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    # Outline geometry defines results by NaN comparisons and by square roots that
    # must not go negative through a fused multiply-add.
    -ffp-contract=off -fno-fast-math)
  if(EDA_WARNINGS_AS_ERRORS)
    target_compile_options(eda_flags INTERFACE -Werror)
  endif()
  if(EDA_SANITIZE)
    target_compile_options(eda_flags INTERFACE
      -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(eda_flags INTERFACE -fsanitize=address,undefined)
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
      target_compile_options(eda_flags INTERFACE
        "-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignore.txt")
    endif()
  endif()
  if(EDA_COVERAGE)
    target_compile_options(eda_flags INTERFACE --coverage)
    target_link_options(eda_flags INTERFACE --coverage)
  endif()
  if(EDA_BUILD_FUZZERS)
    target_compile_options(eda_flags INTERFACE -fsanitize=fuzzer-no-link)
  endif()
elseif(MSVC)
  target_compile_options(eda_flags INTERFACE /W4 /permissive- /utf-8 /fp:precise)
  target_compile_definitions(eda_flags INTERFACE _CRT_SECURE_NO_WARNINGS NOMINMAX)
  if(EDA_WARNINGS_AS_ERRORS)
    target_compile_options(eda_flags INTERFACE /WX)
  endif()
endif()
