# Makes a manual page of its frame: -DFRAME= -DPAGE= -DPROGRAM= -DVERSION= -DPREFIX=
file(READ ${FRAME} text)
string(REGEX MATCHALL "@MANUAL_[a-z]+@" places "${text}")
foreach(place IN LISTS places)
    string(REGEX REPLACE "@MANUAL_([a-z]+)@" "\\1" part ${place})
    execute_process(COMMAND ${PROGRAM} manual ${part} OUTPUT_VARIABLE MANUAL_${part} COMMAND_ERROR_IS_FATAL ANY)
    string(STRIP "${MANUAL_${part}}" MANUAL_${part})
endforeach()
file(CONFIGURE OUTPUT ${PAGE} CONTENT "${text}" @ONLY)
