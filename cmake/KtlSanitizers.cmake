# AddressSanitizer + UndefinedBehaviorSanitizer for the whole build. Any report is fatal, so a
# test that trips one fails under CTest.
if(KTL_SANITIZE)
  set(KTL_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all
      -fno-omit-frame-pointer)
  add_compile_options(${KTL_SANITIZER_FLAGS})
  add_link_options(${KTL_SANITIZER_FLAGS})
endif()
