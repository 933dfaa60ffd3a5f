# Names every case that failed in the output of test programs, with the first lines of each of its failures:
#   failed: TITLE Suite.Case
#       File.cpp:12: Failure
#       ...
# ctest begins each line with the number of the program, as programs may run side by side; -v title=TITLE names the part.
BEGIN { lines_of_failure = 8; lines_of_case = 40 }
{
    program = ""
    if (match($0, /^[0-9]+: /)) { program = substr($0, 1, RLENGTH); $0 = substr($0, RLENGTH + 1) }
    sub(/\r$/, "")
}
/^\[ RUN      \] / { running[program] = $4; texts[program] = ""; count[program] = room[program] = 0; next }
/^\[       OK \] |^\[  SKIPPED \] / { delete running[program]; next }
/^\[  FAILED  \] / && (program in running) && index($4, running[program]) == 1 { tell(program, ""); next }
/: (Failure|error: )/ || /^(unknown file|.*(Sanitizer|runtime error|terminate called|Assertion).*)/ {
    room[program] = lines_of_failure
}
(program in running) && room[program] > 0 && count[program] < lines_of_case && NF > 0 {
    texts[program] = texts[program] "    " substr($0, 1, 300) "\n"
    --room[program]; ++count[program]
}
# What was begun and did not end has crashed or hung.
END { for (program in running) tell(program, " (did not end)") }

function tell(program, remark) {
    printf "failed: %s %s%s\n%s", title, running[program], remark, texts[program]
    delete running[program]
}
