# Warnings that GCC 12 and Clang 14 both know; errors where ORAVANE_WERROR is on (./check turns it on).
add_library(oravane_warnings INTERFACE)
target_compile_options(oravane_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wsuggest-override -Wnon-virtual-dtor -Wcast-qual -Wundef
  # Clang finds stray semicolons in the class macros of the toolkit, too.
  $<$<CXX_COMPILER_ID:GNU>:-Wextra-semi>)
if(ORAVANE_WERROR)
  target_compile_options(oravane_warnings INTERFACE -Werror)
endif()
