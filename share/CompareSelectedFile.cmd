@echo off
rem Compares two files with fc and opens the report in the editor.
rem Arguments: "first file" "second file" "result file" [fc switches...]
rem The report replaces the result file; the switches come before the files.
rem The paths are kept in variables so that three shifts bring up to nine
rem switches into %1..%9.
set "PV_FILE1=%~1"
set "PV_FILE2=%~2"
set "PV_RESULT=%~3"
shift
shift
shift
fc %1 %2 %3 %4 %5 %6 %7 %8 %9 "%PV_FILE1%" "%PV_FILE2%" > "%PV_RESULT%"
Write.exe "%PV_RESULT%"
