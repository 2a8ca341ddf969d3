# 32-bit ARM Linux from Debian's cross libraries, for the tests of Android's 32-bit file; what is built runs under qemu-user.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv7-a)
foreach(language C CXX)
    set(CMAKE_${language}_COMPILER_TARGET arm-linux-gnueabi)
    # Like Android's ABI: the floating-point unit, but floats are handed over in general registers.
    set(CMAKE_${language}_FLAGS_INIT "-march=armv7-a -mfloat-abi=softfp -mfpu=vfpv3-d16")
endforeach()
set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static -L /usr/arm-linux-gnueabi)
