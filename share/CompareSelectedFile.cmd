@echo off
rem Compares two files with fc and opens the report in the editor.
rem Arguments: "first file" "second file" "result file" [fc switches...]
rem The report replaces the result file; the switches come before the files.
fc %4 %5 %6 %7 %8 %9 "%~1" "%~2" > "%~3"
Write.exe "%~3"
