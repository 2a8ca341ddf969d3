# WebAssembly without a C library: clang-19 and lld-19, the declarations of android/include; wasm/ has what stands behind them.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(FENNIC_WASM TRUE)
set(FENNIC_OBJDUMP llvm-objdump-19)
set(CMAKE_STRIP llvm-strip-19)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(CMAKE_C_COMPILER clang-19)
set(CMAKE_CXX_COMPILER clang++-19)
foreach(language C CXX)
    set(CMAKE_${language}_COMPILER_TARGET wasm32)
    # Whatever has these vectors has the other two.
    set(CMAKE_${language}_FLAGS_INIT "-nostdlibinc -msimd128 -mbulk-memory -mnontrapping-fptoint")
endforeach()
string(APPEND CMAKE_CXX_FLAGS_INIT " -nostdinc++ -isystem ${CMAKE_CURRENT_LIST_DIR}/../android/include")
set(CMAKE_EXE_LINKER_FLAGS_INIT -nostdlib)
