@echo off
rem Compares two files with fc and opens the report in the editor.
rem Arguments: "first file" "second file" "result file" [fc switches...]
rem The report replaces the result file; the switches come before the files.
rem After the shift the first file is argument 0, so seven switches fit on the line.
shift
fc %3 %4 %5 %6 %7 %8 %9 "%~0" "%~1" > "%~2"
Write.exe "%~2"
