# Where `cmake --install` puts what is not a target: the resource folder the
# program and the module look up (share/plexview, beside bin/), and the
# desktop integration: launcher, file types, icons and the manual page.
include(GNUInstallDirs)

set(PLEXVIEW_RESOURCE_SOURCE ${PROJECT_SOURCE_DIR}/resources)

# resources/ also holds the desktop files, which have places of their own.
install(DIRECTORY ${PLEXVIEW_RESOURCE_SOURCE}/
  DESTINATION ${CMAKE_INSTALL_DATADIR}/plexview
  PATTERN plexview.desktop EXCLUDE
  PATTERN plexview-mime.xml EXCLUDE
  PATTERN plexview.1 EXCLUDE
  PATTERN icons EXCLUDE
  PATTERN __pycache__ EXCLUDE)

install(FILES ${PLEXVIEW_RESOURCE_SOURCE}/plexview.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PLEXVIEW_RESOURCE_SOURCE}/plexview-mime.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME plexview.xml)
install(FILES ${PLEXVIEW_RESOURCE_SOURCE}/plexview.1
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# The icon: the SVG as drawn, and PNG sizes rendered from it at build time.
set(PLEXVIEW_ICON_SVG ${PLEXVIEW_RESOURCE_SOURCE}/icons/plexview.svg)
install(FILES ${PLEXVIEW_ICON_SVG}
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
find_program(RSVG_CONVERT rsvg-convert)
if(RSVG_CONVERT)
  set(PLEXVIEW_ICON_PNGS "")
  foreach(size 16 22 24 32 48 64 128 256)
    set(png ${PROJECT_BINARY_DIR}/icons/${size}x${size}/plexview.png)
    add_custom_command(OUTPUT ${png}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/icons/${size}x${size}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${png} ${PLEXVIEW_ICON_SVG}
      DEPENDS ${PLEXVIEW_ICON_SVG}
      VERBATIM)
    list(APPEND PLEXVIEW_ICON_PNGS ${png})
    install(FILES ${png} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
  endforeach()
  add_custom_target(plexview_icons ALL DEPENDS ${PLEXVIEW_ICON_PNGS})
else()
  message(WARNING "rsvg-convert not found (Debian: librsvg2-bin): only the SVG icon is installed")
endif()
