# `scripts/package` makes two packages of a release build: a relocatable archive (the folder that
# `cmake --install` makes) and a Debian package of this folder as /opt/corvane with desktop files.
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  set(CMAKE_INSTALL_PREFIX /opt/corvane CACHE PATH "Where to install" FORCE)
endif()

# Only in the Debian package, because these places belong to the system.
set(desktop ${CMAKE_CURRENT_BINARY_DIR}/desktop)
file(READ resources/desktop/corvane.desktop entry)
string(REPLACE "Exec=corvane" "Exec=/opt/corvane/corvane" entry "${entry}")
file(CONFIGURE OUTPUT ${desktop}/corvane.desktop CONTENT "${entry}" @ONLY)
set(share /usr/share)
set(in_package COMPONENT desktop EXCLUDE_FROM_ALL)
install(FILES ${desktop}/corvane.desktop DESTINATION ${share}/applications ${in_package})
install(FILES resources/icons/corvane.svg DESTINATION ${share}/icons/hicolor/scalable/apps ${in_package})
install(FILES resources/desktop/org.corvane.corvane.metainfo.xml DESTINATION ${share}/metainfo ${in_package})
install(FILES resources/desktop/corvane.xml DESTINATION ${share}/mime/packages ${in_package})

# Links in the PATH. A program finds its folder from the real place of its file.
foreach(program corvane corvane-cli corvane-simulator)
  file(MAKE_DIRECTORY ${desktop}/bin)
  file(CREATE_LINK /opt/corvane/${program} ${desktop}/bin/${program} SYMBOLIC)
  install(FILES ${desktop}/bin/${program} DESTINATION /usr/bin ${in_package})
endforeach()
find_program(GZIP gzip REQUIRED)
execute_process(COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/resources/package/changelog
                OUTPUT_FILE ${desktop}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/cli/corvane-cli.1
                OUTPUT_FILE ${desktop}/corvane-cli.1.gz COMMAND_ERROR_IS_FATAL ANY)
install(FILES ${desktop}/corvane-cli.1.gz DESTINATION ${share}/man/man1 ${in_package})
install(FILES resources/package/copyright ${desktop}/changelog.gz DESTINATION ${share}/doc/corvane ${in_package})
install(FILES resources/package/lintian-overrides DESTINATION ${share}/lintian/overrides RENAME corvane
        ${in_package})

set(CPACK_PACKAGE_NAME corvane)
set(CPACK_PACKAGE_VENDOR "The Corvane developers")
set(CPACK_PACKAGE_CONTACT "The Corvane developers <corvane@localhost>")
set(CPACK_GENERATOR TGZ DEB)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/build/package)
set(CPACK_PACKAGE_FILE_NAME corvane-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/package_generator.cmake)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libc6, libstdc++6, libqt6core6, libqt6gui6, libqt6widgets6, libqt6printsupport6, libqt6serialport6, libqt6svg6")
# For document and workbook exports, for opening the help file, for printing; fonts for windows, for
# paper and for names in Chinese.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "libreoffice-calc, libreoffice-writer, xdg-utils, kchmviewer | xchm, cups, fonts-dejavu-core, fonts-liberation, fonts-wqy-microhei | fonts-noto-cjk")
# An upgrade keeps the user's changes to device.txt.
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/resources/package/conffiles)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Links to a recorder, sets it up, watches it live, downloads what it has
stored, and keeps, shows, exports and prints it. Contains a recorder in
software to try everything with.")
include(CPack)
