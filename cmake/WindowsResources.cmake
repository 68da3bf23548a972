# The icon, version and manifest of a program for Windows. SCHEDULER_PROGRAM_ICONS is the folder of the icon theme that
# the build for the host drew (packaging/).
if(WIN32)
  enable_language(RC)
  find_program(ICOTOOL icotool REQUIRED)
  set(PROGRAM_ICON ${CMAKE_BINARY_DIR}/program.ico)
  set(PROGRAM_MANIFEST ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
  file(GLOB pictures ${SCHEDULER_PROGRAM_ICONS}/*/apps/zelvan-scheduler.png)
  if(NOT pictures)
    message(FATAL_ERROR "SCHEDULER_PROGRAM_ICONS names no icon theme; scripts/windows.sh draws it.")
  endif()
  execute_process(COMMAND ${ICOTOOL} --create --output=${PROGRAM_ICON} ${pictures} COMMAND_ERROR_IS_FATAL ANY)
endif()

function(windows_resources PROGRAM PROGRAM_DESCRIPTION)
  if(WIN32)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${PROGRAM}.rc @ONLY)
    target_sources(${PROGRAM} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${PROGRAM}.rc)
  endif()
endfunction()

# A program that shows its screens without a desktop too, as on a machine that only tests.
function(may_run_offscreen program)
  if(WIN32)
    qt_import_plugins(${program} INCLUDE Qt6::QOffscreenIntegrationPlugin)
  endif()
endfunction()
