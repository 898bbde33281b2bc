# Debian packages through CPack (`make package`, or cpack in a build folder):
#   quillon           the console and batch programs, without Qt: what a
#                     server needs
#   quillon-fenetres  the windowed program and its menu entry; depends on
#                     quillon of the same version
# The components are those of cmake/install.cmake. The shared libraries a
# package needs are found by dpkg-shlibdeps; the version is project()'s.
if(WIN32)
  return()  # Windows: the zip and the installer of packaging/windows
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillon)
set(CPACK_PACKAGE_VENDOR "Quillon")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${QUILLON_MAINTENEUR}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/paquets)
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL quillon)
if(QUILLON_AVEC_FENETRES)
  list(APPEND CPACK_COMPONENTS_ALL fenetres)
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${QUILLON_MAINTENEUR}")
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${QUILLON_URL}")
set(CPACK_DEBIAN_PACKAGE_SOURCE quillon)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_QUILLON_PACKAGE_NAME quillon)
set(CPACK_DEBIAN_QUILLON_PACKAGE_SUGGESTS quillon-fenetres)
set(CPACK_DEBIAN_QUILLON_DESCRIPTION
"convertisseur des fichiers de points de la mensuration officielle
Quillon convertit les fichiers de points de la mensuration officielle
(modèle de données MD01) : fichiers de valeurs (.ptv) en fichiers de
précisions (.ptp) et inversement, fichiers de précisions en fichiers de
points MD01 (.ptm), fichiers DC (.pts) en fichiers de valeurs. Chaque
conversion contrôle chaque champ et laisse un journal des champs refusés.
.
Ce paquet contient les programmes en ligne de commande, sans Qt : quillon,
qui convertit un fichier, et quillon-lot, qui convertit des dossiers entiers
sur plusieurs fils avec un rapport en texte ou en JSON.")

set(CPACK_DEBIAN_FENETRES_PACKAGE_NAME quillon-fenetres)
# Qt's translations: its standard dialogs in French, German or Italian.
set(CPACK_DEBIAN_FENETRES_PACKAGE_DEPENDS "quillon (= ${PROJECT_VERSION}), qt6-translations-l10n")
set(CPACK_DEBIAN_FENETRES_DESCRIPTION
"convertisseur des fichiers de points de la mensuration officielle (fenêtres)
Quillon convertit les fichiers de points de la mensuration officielle
(modèle de données MD01) : fichiers de valeurs (.ptv) en fichiers de
précisions (.ptp) et inversement, fichiers de précisions en fichiers de
points MD01 (.ptm), fichiers DC (.pts) en fichiers de valeurs.
.
Ce paquet contient la fenêtre principale (Qt 6), que « quillon » ouvre quand
il est lancé sans argument, et son entrée dans le menu des applications.")

include(CPack)
cpack_add_component(quillon DISPLAY_NAME "Quillon en ligne de commande")
if(QUILLON_AVEC_FENETRES)
  cpack_add_component(fenetres DISPLAY_NAME "Quillon en fenêtres" DEPENDS quillon)
endif()
