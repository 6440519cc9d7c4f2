# Compile settings shared by every target of the project.
add_library(nfce_opcoes INTERFACE)
target_compile_features(nfce_opcoes INTERFACE cxx_std_20)
target_compile_options(nfce_opcoes INTERFACE -Wall -Wextra -Werror)
target_compile_definitions(nfce_opcoes INTERFACE QT_NO_KEYWORDS)
if(NFCE_FUZZ)
    # Coverage for libFuzzer in every object; the fuzz targets link its main. Optimised as
    # libFuzzer's own examples are: unoptimised, the parsers run a few times fewer inputs.
    target_compile_options(nfce_opcoes INTERFACE -fsanitize=fuzzer-no-link -O1)
endif()
if(NFCE_SANITIZAR OR NFCE_FUZZ)
    target_compile_options(nfce_opcoes INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(nfce_opcoes INTERFACE -fsanitize=address,undefined)
    target_compile_definitions(nfce_opcoes INTERFACE _GLIBCXX_ASSERTIONS QT_FORCE_ASSERTS)
endif()
