# Cross-building for Windows x64 with Debian's g++-mingw-w64-x86-64-posix. SCHEDULER_WINDOWS_LIBRARIES names the
# folder that libraries.sh filled.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH $ENV{SCHEDULER_WINDOWS_LIBRARIES} /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} $ENV{SCHEDULER_WINDOWS_LIBRARIES}/lib/pkgconfig)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
# CMake links a library that it finds as DLL's stub, such as libodbc32.a, with -Bdynamic before and -Bstatic never
# after it; the compiler's own libraries, which come last, would then be taken as DLLs.
set(CMAKE_CXX_STANDARD_LIBRARIES "-lkernel32 -luser32 -lgdi32 -lwinspool -lshell32 -lole32 -loleaut32 -luuid \
-lcomdlg32 -ladvapi32 -Wl,-Bstatic" CACHE STRING "")
set(CMAKE_AUTORCC_OPTIONS "--no-zstd") # the host's rcc packs so, and this Qt cannot unpack it
set(QT_HOST_PATH /usr CACHE STRING "")
file(GLOB host_packages /usr/lib/*/cmake/Qt6HostInfo)
cmake_path(GET host_packages PARENT_PATH host_packages)
set(QT_HOST_PATH_CMAKE_DIR ${host_packages} CACHE STRING "")
