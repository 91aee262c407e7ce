# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later

# What a tag, a peer or a file says is read by all of this: a mistake in memory is to end the program, not to run what
# somebody else wrote. The test install.hardening reads all of it back from what is installed.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported()

# The last two are for one kind of processor each.
foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
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
