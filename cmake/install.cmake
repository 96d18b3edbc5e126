# `cmake --install BUILD --prefix DIR` makes DIR a folder that works wherever it is put: it has the
# programs, the files that they look for in their own folder, and the plug-ins.
#
# Builds all that is installed, without the tests.
add_custom_target(corvane-folder DEPENDS corvane corvane-simulator $<TARGET_NAME_IF_EXISTS:corvane-cli>)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
foreach(program corvane corvane-cli corvane-simulator)
  if(TARGET ${program})
    set_target_properties(${program} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${program} RUNTIME DESTINATION .)
  endif()
endforeach()
install(FILES resources/device.txt resources/desktop/corvane.desktop resources/icons/corvane.svg DESTINATION .)

# The programs' folder of a build has this file too.
configure_file(resources/device.txt ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/device.txt COPYONLY)
