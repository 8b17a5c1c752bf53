# The Debian package: `cpack` in the build folder (scripts/package) writes
# plexview_<version>_<arch>.deb holding what `cmake --install` installs, under
# /usr. The libraries it needs are found by dpkg-shlibdeps from the program
# and the module; Python and NumPy are named here, since nothing links them.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME plexview)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Plexview developers")
set(CPACK_PACKAGE_CONTACT "Plexview developers <plexview@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer for complex networks in 3-D")
# The long description; CPack puts the summary above it.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Plexview opens networks (Pajek, GraphML), lays them out in three dimensions
with a force-directed simulation, colours and filters them by vertex
properties and exports pictures, positions and web pages. It has an
embedded Python console, and the same functions are available to Python
programs as the plexview module.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)  # plexview_<version>_<arch>.deb
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The module is built for one Python minor version.
math(EXPR plexview_next_python "${Python3_VERSION_MINOR} + 1")
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "python3 (>= ${Python3_VERSION_MAJOR}.${Python3_VERSION_MINOR}~), python3 (<< ${Python3_VERSION_MAJOR}.${plexview_next_python}), python3-numpy")
# Pictures without a display (--render under xvfb-run), the image formats
# beyond PNG and the fonts of the labels.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "xvfb, xauth, libgl1-mesa-dri, qt6-image-formats-plugins, fonts-dejavu-core")

include(CPack)
