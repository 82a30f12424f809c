# Where everything goes on `cmake --install`. Included before the programs, which ask for these places, and by
# cmake/InstallFiles.cmake behind them.

include(GNUInstallDirs)
set(TARNWICK_INSTALL_GAMES games) # the launcher: in a player's path
set(TARNWICK_INSTALL_GAME ${CMAKE_INSTALL_LIBEXECDIR}/tarnwick) # the game itself and what it starts: in nobody's
set(TARNWICK_INSTALL_DATA ${CMAKE_INSTALL_DATADIR}/games/tarnwick)

# From the launcher to the others, so that the installed tree may be moved.
file(RELATIVE_PATH TARNWICK_GAME_PLACE
    /${TARNWICK_INSTALL_GAMES} /${TARNWICK_INSTALL_GAME}/tarnwick)
file(RELATIVE_PATH TARNWICK_DATA_PLACE /${TARNWICK_INSTALL_GAMES} /${TARNWICK_INSTALL_DATA})
