# SPDX-FileCopyrightText: The TARN Inserter authors
# SPDX-License-Identifier: Apache-2.0

# run(command argument...): ends the script with the output of the command when it fails.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(result)
        list(JOIN ARGN " " line)
        message(FATAL_ERROR "${line}\nfailed (${result}):\n${output}")
    endif()
endfunction()
