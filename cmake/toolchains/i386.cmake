# The compiler calls it i686. Registers of the old coprocessor hold more digits than a double, so
# that results would change with the optimisation; SSE2 computes as any other machine does.
set(TRIPLET i686-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR i386)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
