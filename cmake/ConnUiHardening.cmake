# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# All of this code reads the data of tags, peers and files: an error in memory is to end the program, not to run
# somebody else's code. The test install.hardening checks all of it in the installed files.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()

# Where a function may be entered is for the processor to check. Clang takes the flags of others, and warns.
set(checked_entries)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
    set(checked_entries -fcf-protection)
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
    set(checked_entries -mbranch-protection=standard)
endif()
foreach(flag -fstack-protector-strong -fstack-clash-protection ${checked_entries})
    string(MAKE_C_IDENTIFIER "HAVE${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
        add_compile_options(${flag})
    endif()
endforeach()
add_compile_definitions(_GLIBCXX_ASSERTIONS)
if(NOT ECM_ENABLE_SANITIZERS)
    # It knows the sizes of things only where the compiler has optimized; sanitizers check by themselves.
    add_compile_options("$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")
endif()
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
