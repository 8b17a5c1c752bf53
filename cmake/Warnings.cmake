# Every target of ours gets the same warnings; third-party headers are included
# as system headers so their warnings do not count against us.
add_library(plexview_warnings INTERFACE)
target_compile_options(plexview_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion)
if(PLEXVIEW_WERROR)
  target_compile_options(plexview_warnings INTERFACE -Werror)
endif()

if(PLEXVIEW_FUZZ)
  set(PLEXVIEW_FUZZ_FLAGS -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined)
  add_compile_options(${PLEXVIEW_FUZZ_FLAGS} -g)
  add_link_options(-fsanitize=address,undefined)
endif()

if(PLEXVIEW_TSAN)
  add_compile_options(-fsanitize=thread -g)
  add_link_options(-fsanitize=thread)
endif()
