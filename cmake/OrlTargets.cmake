# What every target of the project has in common.

# orl_target_defaults(TARGET): the language, hidden symbols, warnings, and the instrumentation of the build.
function(orl_target_defaults target)
  target_compile_features(${target} PUBLIC cxx_std_17)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)

  target_compile_options(${target} PRIVATE
    -Wall
    -Wextra
    -Wpedantic
    -Wconversion            # silent narrowing is how a tick count loses its upper half
    -Wsign-conversion
    -Wshadow
    -Wnon-virtual-dtor      # counted objects are deleted through their bases
    -Woverloaded-virtual
    -Wcast-align
    -Wformat=2)
  if(ORL_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()

  # One product and one sum are rounded one after the other on every processor, so that a document is the same
  # text wherever it is written.
  target_compile_options(${target} PRIVATE -ffp-contract=off)

  if(ORL_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${ORL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${ORL_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
      # The JSON library's stack adds to its null pointer before the first push; only clang's check objects.
      target_compile_options(${target} PRIVATE -fno-sanitize=pointer-overflow)
    else()
      # Instrumented, g++ finds one in the standard library's own <regex>.
      target_compile_options(${target} PRIVATE -Wno-maybe-uninitialized)
    endif()
  endif()

  if(ORL_COVERAGE)
    # Threads count in the same places, and a lost count can be the only one of a line.
    target_compile_options(${target} PRIVATE --coverage -fprofile-update=atomic -O0 -g0)
    target_link_options(${target} PRIVATE --coverage)
  endif()
endfunction()

# orl_library_defaults(TARGET): what the sources of a library have beyond that.
function(orl_library_defaults target)
  orl_target_defaults(${target})
  if(ORL_DEBUG_INFO)
    target_compile_options(${target} PRIVATE -g)
  endif()
endfunction()

# orl_use_json(TARGET SCOPE): RapidJSON, with one meaning of its assertion, and one end of its memory, in
# every unit that shares its templates. The library tests whatever it is given before it asks RapidJSON for
# it, so that no assertion can fire; a build for testing throws to prove it, any other checks nothing. Neither
# aborts. A lack of memory throws std::bad_alloc.
function(orl_use_json target scope)
  target_include_directories(${target} SYSTEM ${scope} "${ORL_RAPIDJSON_INCLUDE_DIR}")
  target_compile_options(${target} ${scope}
    "SHELL:-include \"${PROJECT_SOURCE_DIR}/src/core/internal/orlJsonMemory.h\"")
  if(ORL_CHECKED_JSON)
    target_compile_options(${target} ${scope}
      "-DRAPIDJSON_ASSERT(x)=static_cast<void>((x)?0:throw#x)"
      $<$<CXX_COMPILER_ID:GNU>:-Wno-terminate> $<$<CXX_COMPILER_ID:Clang>:-Wno-exceptions>)
  else()
    target_compile_options(${target} ${scope} "-DRAPIDJSON_ASSERT(x)=static_cast<void>(0)")
  endif()
endfunction()
