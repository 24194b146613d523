# Runs a program and compares what it prints with a file:  cmake -DPROGRAM=... -DEXPECTED=... -P run.cmake
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE result)
file(READ ${EXPECTED} expected)
if(NOT result EQUAL 0 OR NOT errors STREQUAL "" OR NOT output STREQUAL expected)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}\n--- printed\n${output}--- expected\n${expected}--- errors\n${errors}")
endif()
