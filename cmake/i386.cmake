# 32-bit x86 Linux from Debian's multilib packages, for the tests of Android's 32-bit file; they run on a 64-bit processor.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
foreach(language C CXX)
    # Like Android's ABI, with floats that are computed as floats. The kernel's headers are those of both.
    set(CMAKE_${language}_FLAGS_INIT "-m32 -mssse3 -mfpmath=sse -idirafter /usr/include/x86_64-linux-gnu")
endforeach()
