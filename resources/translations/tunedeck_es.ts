<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>DesktopAction</name>
    <message>
        <source>Show or hide the window</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Mostrar u ocultar la ventana</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Reproducir o pausar</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Siguiente</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Anterior</translation>
    </message>
    <message>
        <source>Five seconds forward</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Avanzar cinco segundos</translation>
    </message>
    <message>
        <source>Five seconds back</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Retroceder cinco segundos</translation>
    </message>
    <message>
        <source>Volume up</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Subir el volumen</translation>
    </message>
    <message>
        <source>Volume down</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Bajar el volumen</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Mostrar u ocultar las listas de reproducción</translation>
    </message>
    <message>
        <source>Show the player</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Mostrar el reproductor</translation>
    </message>
    <message>
        <source>Keep above all other windows</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Mantener por encima de las demás ventanas</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>A small window that controls the running music player</source>
        <comment>For --help</comment>
        <translation>Una ventana pequeña que controla el reproductor de música en marcha</translation>
    </message>
    <message>
        <source>Carries out &lt;name&gt; in the running Tunedeck, or starts Tunedeck for it. &lt;name&gt; is one of: %1.</source>
        <comment>For --help; &lt;name&gt; stays as it is, %1 is a list of names</comment>
        <translation>Ejecuta &lt;name&gt; en el Tunedeck que ya está abierto, o inicia Tunedeck para ello. &lt;name&gt; es una de estas acciones: %1.</translation>
    </message>
    <message>
        <source>unknown action; see --help</source>
        <comment>On the command line</comment>
        <translation>acción desconocida; consulte --help</translation>
    </message>
    <message>
        <source>already running, but not responding</source>
        <comment>On the command line</comment>
        <translation>ya está en marcha, pero no responde</translation>
    </message>
    <message>
        <source>there is no session bus, so no music player can be reached</source>
        <comment>On the command line</comment>
        <translation>no hay bus de sesión, así que no se puede contactar con ningún reproductor de música</translation>
    </message>
    <message>
        <source>For sessions that start Tunedeck: opens the window without the keyboard focus, and only while a player is there if the preferences say so.</source>
        <comment>For --help</comment>
        <translation>Para las sesiones que inician Tunedeck: abre la ventana sin el foco del teclado y, si así se ha elegido en las preferencias, solo mientras haya un reproductor.</translation>
    </message>
</context>
<context>
    <name>tunedeck</name>
    <message>
        <source>Music is not open</source>
        <comment>&apos;Music is not open&apos; displayed in LCD</comment>
        <extracomment>Also the tooltip of the empty playlist picker.</extracomment>
        <translation>El reproductor no está abierto</translation>
    </message>
    <message>
        <source>No Song</source>
        <comment>&apos;No Song&apos; displayed in LCD</comment>
        <translation>Ninguna canción</translation>
    </message>
    <message>
        <source>%1 cannot seek in this track</source>
        <comment>Tooltip of a disabled control</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 no puede desplazarse en esta pista</translation>
    </message>
    <message>
        <source>%1 has no volume control</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 no tiene control de volumen</translation>
    </message>
    <message>
        <source>%1 has no shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 no tiene modo aleatorio</translation>
    </message>
    <message>
        <source>%1 has no repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 no tiene modo de repetición</translation>
    </message>
    <message>
        <source>%1 keeps its own volume</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 mantiene su propio volumen</translation>
    </message>
    <message>
        <source>%1 keeps its own shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 mantiene su propio modo aleatorio</translation>
    </message>
    <message>
        <source>%1 keeps its own repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 mantiene su propio modo de repetición</translation>
    </message>
    <message>
        <source>%1 is not responding</source>
        <comment>In the LCD while the player hangs</comment>
        <extracomment>%1 is the player. Also the tooltip of the controls that are then disabled.</extracomment>
        <translation>%1 no responde</translation>
    </message>
    <message>
        <source>Music</source>
        <comment>In place of the name of a player that has none: the music player</comment>
        <translation>El reproductor</translation>
    </message>
    <message>
        <source>Automatic (%1)</source>
        <comment>In the list of players to follow: the one that plays, which is %1 now</comment>
        <translation>Automático (%1)</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>In the list of players to follow: the one that plays</comment>
        <translation>Automático</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>In the list of players to follow: the player, and the track that it plays</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (not open)</source>
        <comment>In the list of players to follow: a chosen player that does not run</comment>
        <translation>%1 (no está abierto)</translation>
    </message>
    <message>
        <source>Follow</source>
        <comment>Menu title: which player to follow</comment>
        <translation>Seguir</translation>
    </message>
    <message>
        <source>Never Follow %1</source>
        <comment>Menu command: leave the player %1 out for good</comment>
        <translation>No seguir nunca a %1</translation>
    </message>
    <message>
        <source>Waiting for %1</source>
        <comment>Tooltip of the LCD: %1 is the player to follow</comment>
        <translation>Esperando a %1</translation>
    </message>
    <message>
        <source>Show Player</source>
        <comment>Menu command that is disabled</comment>
        <translation>Mostrar el reproductor</translation>
    </message>
    <message>
        <source>Show %1</source>
        <comment>Menu command: show the player&apos;s own window</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>Mostrar %1</translation>
    </message>
    <message>
        <source>%1 cannot show its window</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>%1 no puede mostrar su ventana</translation>
    </message>
    <message>
        <source>Live audio has no other tracks</source>
        <comment>Tooltip of what goes to the next and previous track, while it is disabled</comment>
        <translation>El audio en directo no tiene otras pistas</translation>
    </message>
    <message>
        <source>%1 plays no sound yet</source>
        <comment>In the menu Play Through</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 aún no reproduce sonido</translation>
    </message>
    <message>
        <source>%1 plays on another device</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 reproduce en otro dispositivo</translation>
    </message>
    <message>
        <source>There is no sound server</source>
        <comment>In the menu Play Through</comment>
        <translation>No hay servidor de sonido</translation>
    </message>
    <message>
        <source>The sound server is not responding</source>
        <comment>In the menu Play Through</comment>
        <translation>El servidor de sonido no responde</translation>
    </message>
    <message>
        <source>The sound of %1 cannot be told from that of others</source>
        <comment>In the menu Play Through</comment>
        <translation>El sonido de %1 no se distingue del de otros programas</translation>
    </message>
    <message>
        <source>Default</source>
        <comment>In the menu Play Through: the output that the desktop is set to</comment>
        <translation>Predeterminada</translation>
    </message>
    <message>
        <source>%1 chooses its output itself</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 elige su salida por sí mismo</translation>
    </message>
    <message>
        <source>Play Through</source>
        <comment>Title of a menu: the loudspeakers or headphones that the player plays to</comment>
        <translation>Reproducir por</translation>
    </message>
    <message>
        <source>The sandbox that Tunedeck runs in lets it start no other programs. Start your player yourself.</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>El entorno aislado en el que se ejecuta Tunedeck no le permite iniciar otros programas. Inicie usted mismo el reproductor.</translation>
    </message>
    <message>
        <source>The sandbox keeps the sound server from Tunedeck</source>
        <comment>In the menu Play Through</comment>
        <translation>El entorno aislado separa a Tunedeck del servidor de sonido</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot;</source>
        <comment>Command to open main Music app</comment>
        <translation>Abrir el reproductor</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot; (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Abrir el reproductor (no es posible en un entorno aislado)</translation>
    </message>
</context>
<context>
    <name>tunedeck::AboutWindow</name>
    <message>
        <source>About</source>
        <comment>About window title</comment>
        <translation>Acerca de</translation>
    </message>
    <message>
        <source>Version %1 (%2)</source>
        <comment>About window: the version and the number of its build</comment>
        <translation>Versión %1 (%2)</translation>
    </message>
    <message>
        <source>Credits</source>
        <comment>For accessibility: the about window&apos;s text</comment>
        <translation>Créditos</translation>
    </message>
</context>
<context>
    <name>tunedeck::AppPreferencesWindowController</name>
    <message>
        <source>General</source>
        <comment>Title for General tab</comment>
        <translation>General</translation>
    </message>
    <message>
        <source>Interface</source>
        <comment>Title for Interface tab</comment>
        <translation>Interfaz</translation>
    </message>
    <message>
        <source>Updates</source>
        <comment>Title for Updates tab</comment>
        <translation>Actualizaciones</translation>
    </message>
    <message>
        <source>Panes</source>
        <comment>For accessibility: the toolbar of the preferences window</comment>
        <translation>Paneles</translation>
    </message>
    <message>
        <source>Preferences</source>
        <comment>Window Title for Preferences</comment>
        <translation>Preferencias</translation>
    </message>
</context>
<context>
    <name>tunedeck::ApplicationInstance</name>
    <message>
        <source>Tunedeck is busy</source>
        <comment>On the command line: why an action is refused</comment>
        <translation>Tunedeck está ocupado</translation>
    </message>
</context>
<context>
    <name>tunedeck::ControlAvailability</name>
    <message>
        <source>Play or stop playing live audio</source>
        <comment>For UI labels: Play or stop playing live audio</comment>
        <translation>Reproducir o detener el audio en directo</translation>
    </message>
    <message>
        <source>Play or pause the current track</source>
        <comment>For UI labels: Play or pause the current track</comment>
        <translation>Reproducir o pausar la pista actual</translation>
    </message>
    <message>
        <source>Muted – turn the volume up to hear it</source>
        <comment>Tooltip of the quiet speaker</comment>
        <translation>Silenciado: suba el volumen para oírlo</translation>
    </message>
    <message>
        <source>Volume, set on the sound server</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Volumen, ajustado en el servidor de sonido</translation>
    </message>
    <message>
        <source>Volume, set in %1</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Volumen, ajustado en %1</translation>
    </message>
</context>
<context>
    <name>tunedeck::DesktopIntegration</name>
    <message>
        <source>Waiting for the desktop…</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Esperando al escritorio…</translation>
    </message>
    <message>
        <source>The keys are in the desktop&apos;s keyboard settings.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Las teclas están en los ajustes de teclado del escritorio.</translation>
    </message>
    <message>
        <source>The desktop refuses.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>El escritorio lo rechaza.</translation>
    </message>
    <message>
        <source>This desktop offers none. Its keyboard settings can run “tunedeck --action next” instead.</source>
        <comment>Below a check box in the preferences: keyboard shortcuts for every window</comment>
        <translation>Este escritorio no ofrece ninguno. En su lugar, sus ajustes de teclado pueden ejecutar «tunedeck --action next».</translation>
    </message>
    <message>
        <source>You have changed the entry in the autostart folder, so it stays as it is.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>Ha cambiado la entrada de la carpeta de inicio automático, así que se queda como está.</translation>
    </message>
    <message>
        <source>The autostart folder cannot be changed.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>No se puede cambiar la carpeta de inicio automático.</translation>
    </message>
    <message>
        <source>Tunedeck is at hand when you log in.</source>
        <comment>The desktop may show it when it asks whether to allow this</comment>
        <translation>Tunedeck está a mano al iniciar la sesión.</translation>
    </message>
    <message>
        <source>The desktop gives no usable answer.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>El escritorio no da ninguna respuesta utilizable.</translation>
    </message>
</context>
<context>
    <name>tunedeck::DockMenuItems</name>
    <message>
        <source>Now Playing</source>
        <comment>For UI labels: Now Playing</comment>
        <translation>Reproduciendo ahora</translation>
    </message>
    <message>
        <source>Track</source>
        <comment>For UI labels: Track</comment>
        <translation>Pista</translation>
    </message>
    <message>
        <source>Artist</source>
        <comment>For UI labels: Artist</comment>
        <translation>Artista</translation>
    </message>
    <message>
        <source>Album</source>
        <comment>For UI labels: Album</comment>
        <translation>Álbum</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Siguiente</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Anterior</translation>
    </message>
</context>
<context>
    <name>tunedeck::HelpWindow</name>
    <message>
        <source>%1 › %2</source>
        <comment>What the help&apos;s search found: a page and a section of it</comment>
        <translation>%1 › %2</translation>
    </message>
    <message>
        <source>Tunedeck Help</source>
        <comment>Title of the help window</comment>
        <translation>Ayuda de Tunedeck</translation>
    </message>
    <message>
        <source>Page</source>
        <comment>For accessibility: the text of the help page</comment>
        <translation>Página</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>Button of the help window: to the page shown before</comment>
        <translation>Atrás</translation>
    </message>
    <message>
        <source>Forward</source>
        <comment>Button of the help window: undoes Back</comment>
        <translation>Adelante</translation>
    </message>
    <message>
        <source>Search the help</source>
        <comment>For accessibility: the help window&apos;s search field</comment>
        <translation>Buscar en la ayuda</translation>
    </message>
    <message>
        <source>Search</source>
        <comment>In the help window&apos;s empty search field</comment>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Search results</source>
        <comment>For accessibility: what the help&apos;s search found</comment>
        <translation>Resultados de la búsqueda</translation>
    </message>
    <message>
        <source>Contents</source>
        <comment>For accessibility: the list of the help&apos;s pages</comment>
        <translation>Contenido</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <comment>In place of what the help&apos;s search found</comment>
        <translation>No se ha encontrado nada</translation>
    </message>
</context>
<context>
    <name>tunedeck::InterfacePreferencesViewController</name>
    <message>
        <source>&amp;Classic appearance</source>
        <comment>Check box in the Interface pane</comment>
        <translation>Apariencia &amp;clásica</translation>
    </message>
    <message>
        <source>The window stays light, even on a dark desktop.</source>
        <comment>Below the check box &quot;Classic appearance&quot;</comment>
        <translation>La ventana se mantiene clara aunque el escritorio sea oscuro.</translation>
    </message>
    <message>
        <source>&amp;Dark icon on a dark desktop</source>
        <comment>Check box in the Interface pane: the program&apos;s icon in the dock</comment>
        <translation>&amp;Icono oscuro en un escritorio oscuro</translation>
    </message>
    <message>
        <source>The icon in the dock is light or dark, like the desktop.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;</comment>
        <translation>El icono del dock es claro u oscuro como el escritorio.</translation>
    </message>
    <message>
        <source>This desktop always shows the same icon.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;, where it has no effect</comment>
        <translation>Este escritorio muestra siempre el mismo icono.</translation>
    </message>
    <message>
        <source>&amp;Hide the volume buttons</source>
        <comment>Check box in the Interface pane</comment>
        <translation>&amp;Ocultar los botones de volumen</translation>
    </message>
    <message>
        <source>These are the two speakers beside the volume slider.</source>
        <comment>Below the check box &quot;Hide the volume buttons&quot;</comment>
        <translation>Son los dos altavoces situados junto al control de volumen.</translation>
    </message>
</context>
<context>
    <name>tunedeck::KeepAbove</name>
    <message>
        <source>Keep Above All Other Windows (Floating, on Every Workspace)</source>
        <comment>Menu command; on Sway</comment>
        <translation>Mantener por encima de las demás ventanas (flotante, en todos los espacios de trabajo)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Pinned)</source>
        <comment>Menu command; pinned: Hyprland&apos;s word</comment>
        <translation>Mantener por encima de las demás ventanas (fijada)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Restarts Tunedeck)</source>
        <comment>Menu command</comment>
        <translation>Mantener por encima de las demás ventanas (reinicia Tunedeck)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (The Desktop Refuses)</source>
        <comment>Menu command that had no effect</comment>
        <translation>Mantener por encima de las demás ventanas (el escritorio se niega)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible on Wayland)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Mantener por encima de las demás ventanas (no es posible en Wayland)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows</source>
        <comment>For Menu Command labels: Keep Above All Other Windows</comment>
        <translation>Mantener por encima de las demás ventanas</translation>
    </message>
    <message>
        <source>KWin does this for Tunedeck.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>KWin lo hace para Tunedeck.</translation>
    </message>
    <message>
        <source>Sway keeps it above tiled windows, but not above others that float.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Sway la mantiene por encima de las ventanas en mosaico, pero no de otras que flotan.</translation>
    </message>
    <message>
        <source>Hyprland floats and pins it on every workspace.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Hyprland la hace flotar y la fija en todos los espacios de trabajo.</translation>
    </message>
    <message>
        <source>Tunedeck restarts through XWayland, where it can do this. It may look less sharp.</source>
        <comment>Tooltip of the menu command to keep the window above; less sharp: on a scaled screen</comment>
        <translation>Tunedeck se reinicia mediante XWayland, donde puede hacerlo. Puede verse menos nítido.</translation>
    </message>
    <message>
        <source>Use the window&apos;s menu instead: Alt+Space in GNOME, Alt+F3 in KDE Plasma.</source>
        <comment>Tooltip of the menu command to keep the window above all others</comment>
        <translation>Use en su lugar el menú de la ventana: Alt+Espacio en GNOME, Alt+F3 en KDE Plasma.</translation>
    </message>
    <message>
        <source>Tunedeck would have to restart through XWayland; choose the command in its Window menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>Tunedeck tendría que reiniciarse mediante XWayland; elija la orden en su menú Ventana</translation>
    </message>
    <message>
        <source>On Wayland only the desktop can keep a window above all others; see the window&apos;s menu</source>
        <comment>On the command line: why the action is refused</comment>
        <translation>En Wayland solo el escritorio puede mantener una ventana por encima de las demás; consulte el menú de la ventana</translation>
    </message>
    <message>
        <source>The desktop refuses; see the window&apos;s menu</source>
        <comment>On the command line: the desktop has not kept the window above all others</comment>
        <translation>El escritorio lo rechaza; consulte el menú de la ventana</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Mantener por encima de las demás ventanas (no es posible en un entorno aislado)</translation>
    </message>
    <message>
        <source>The sandbox keeps Tunedeck from the desktop; see the window&apos;s menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>El entorno aislado separa a Tunedeck del escritorio; consulte el menú de la ventana</translation>
    </message>
</context>
<context>
    <name>tunedeck::LcdView</name>
    <message>
        <source>Live</source>
        <comment>In place of the times while a live stream plays</comment>
        <translation>En directo</translation>
    </message>
    <message>
        <source>Position</source>
        <comment>For accessibility: the progress slider</comment>
        <translation>Posición</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>The info button</comment>
        <translation>Mostrar u ocultar las listas de reproducción</translation>
    </message>
</context>
<context>
    <name>tunedeck::MainMenu</name>
    <message>
        <source>File</source>
        <comment>Menu title</comment>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>Controls</source>
        <comment>Menu title</comment>
        <translation>Controles</translation>
    </message>
    <message>
        <source>Window</source>
        <comment>Menu title</comment>
        <translation>Ventana</translation>
    </message>
    <message>
        <source>Help</source>
        <comment>Menu title</comment>
        <translation>Ayuda</translation>
    </message>
    <message>
        <source>About Tunedeck</source>
        <comment>Menu command</comment>
        <translation>Acerca de Tunedeck</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <comment>Menu command</comment>
        <translation>Buscar actualizaciones…</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <comment>Menu command</comment>
        <translation>Preferencias…</translation>
    </message>
    <message>
        <source>Quit</source>
        <comment>Menu command</comment>
        <translation>Salir</translation>
    </message>
    <message>
        <source>Close Window</source>
        <comment>Menu command</comment>
        <translation>Cerrar la ventana</translation>
    </message>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Siguiente</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Anterior</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <comment>Menu command</comment>
        <translation>Subir el volumen</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <comment>Menu command</comment>
        <translation>Bajar el volumen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Menu command</comment>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Menu command</comment>
        <translation>Ampliar</translation>
    </message>
    <message>
        <source>Hide Playlists</source>
        <comment>Menu command: close the drawer</comment>
        <translation>Ocultar las listas de reproducción</translation>
    </message>
    <message>
        <source>Show Playlists</source>
        <comment>Menu command: open the drawer</comment>
        <translation>Mostrar las listas de reproducción</translation>
    </message>
    <message>
        <source>Tunedeck Help</source>
        <comment>Menu command</comment>
        <translation>Ayuda de Tunedeck</translation>
    </message>
    <message>
        <source>Terms and Conditions</source>
        <comment>Menu command</comment>
        <translation>Términos y condiciones</translation>
    </message>
    <message>
        <source>Run Through XWayland</source>
        <comment>Menu command that can be checked</comment>
        <translation>Ejecutar mediante XWayland</translation>
    </message>
    <message>
        <source>Most desktops can then keep the window above others. It may look less sharp.</source>
        <comment>Tooltip of the menu command to run Tunedeck through XWayland; less sharp: on a scaled screen</comment>
        <translation>La mayoría de los escritorios pueden así mantener la ventana por encima de las demás. Puede verse menos nítida.</translation>
    </message>
    <message>
        <source>Follow Automatically</source>
        <comment>Menu command: stop waiting for the chosen player</comment>
        <translation>Seguir automáticamente</translation>
    </message>
</context>
<context>
    <name>tunedeck::MusicConnector</name>
    <message>
        <source>0:00</source>
        <comment>For UI labels: 0:00</comment>
        <translation>0:00</translation>
    </message>
</context>
<context>
    <name>tunedeck::NeverFollowedView</name>
    <message>
        <source>Follow &amp;Again</source>
        <comment>Button in the General pane: take a player out of the list</comment>
        <translation>Seguir de nue&amp;vo</translation>
    </message>
    <message>
        <source>Players that are never followed</source>
        <comment>For accessibility: a list in the General pane</comment>
        <translation>Reproductores que no se siguen nunca</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlayerView</name>
    <message>
        <source>Close</source>
        <comment>Window button</comment>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Window button</comment>
        <translation>Minimizar</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Window button</comment>
        <translation>Ampliar</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Transport button</comment>
        <translation>Anterior</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Transport button</comment>
        <translation>Reproducir o pausar</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Transport button</comment>
        <translation>Siguiente</translation>
    </message>
    <message>
        <source>Silence</source>
        <comment>Button at the quiet end of the volume slider</comment>
        <translation>Silencio</translation>
    </message>
    <message>
        <source>Volume</source>
        <comment>Volume slider</comment>
        <translation>Volumen</translation>
    </message>
    <message>
        <source>Full volume</source>
        <comment>Button at the loud end of the volume slider</comment>
        <translation>Volumen máximo</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlaylistView</name>
    <message>
        <source>Playlist:</source>
        <comment>Caption in the drawer, before the playlist picker</comment>
        <translation>Lista:</translation>
    </message>
    <message>
        <source>Playlist</source>
        <comment>For accessibility: the playlist picker</comment>
        <translation>Lista de reproducción</translation>
    </message>
    <message>
        <source>Done</source>
        <comment>Button in the drawer: play the chosen playlist</comment>
        <translation>Iniciar</translation>
    </message>
    <message>
        <source>Play the chosen playlist</source>
        <comment>Tooltip of the done button in the drawer</comment>
        <translation>Reproducir la lista elegida</translation>
    </message>
    <message>
        <source>Shuffle</source>
        <comment>Button in the drawer</comment>
        <translation>Orden aleatorio</translation>
    </message>
    <message>
        <source>Repeat</source>
        <comment>Button in the drawer</comment>
        <translation>Repetición</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlaylistViewController</name>
    <message>
        <source>Repeat: off</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Repetición: desactivada</translation>
    </message>
    <message>
        <source>Repeat: one</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Repetición: una pista</translation>
    </message>
    <message>
        <source>Repeat: all</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Repetición: todas las pistas</translation>
    </message>
    <message>
        <source>Choose a playlist</source>
        <comment>Tooltip of the playlist picker</comment>
        <translation>Elija una lista de reproducción</translation>
    </message>
    <message>
        <source>The player has no playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>El reproductor no tiene listas de reproducción</translation>
    </message>
    <message>
        <source>There are no playlist files (.m3u, .m3u8, .pls, .xspf) in your music folder</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>No hay archivos de listas de reproducción (.m3u, .m3u8, .pls, .xspf) en su carpeta de música</translation>
    </message>
    <message>
        <source>Waiting for the player&apos;s playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Esperando las listas de reproducción del reproductor</translation>
    </message>
    <message>
        <source>This player neither offers playlists nor opens playlist files</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Este reproductor no ofrece listas de reproducción ni abre archivos de listas</translation>
    </message>
    <message>
        <source>Shuffle: on</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Orden aleatorio: activado</translation>
    </message>
    <message>
        <source>Shuffle: off</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Orden aleatorio: desactivado</translation>
    </message>
    <message>
        <source>There are more playlists than these</source>
        <comment>After the last playlist, and the playlist picker&apos;s tooltip</comment>
        <translation>Hay más listas de reproducción que estas</translation>
    </message>
</context>
<context>
    <name>tunedeck::PreferencesViewController</name>
    <message>
        <source>&amp;Remaining time</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>Tiempo &amp;restante</translation>
    </message>
    <message>
        <source>&amp;Duration</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>&amp;Duración</translation>
    </message>
    <message>
        <source>&amp;Follow player:</source>
        <comment>Caption in the General pane, before the choice of the player</comment>
        <translation>&amp;Seguir al reproductor:</translation>
    </message>
    <message>
        <source>Automatic follows the player that is playing.</source>
        <comment>Below the choice of the player to follow</comment>
        <translation>«Automático» sigue al reproductor que está sonando.</translation>
    </message>
    <message>
        <source>Time on the right:</source>
        <comment>Caption in the General pane: the display&apos;s time on the right</comment>
        <translation>Tiempo de la derecha:</translation>
    </message>
    <message>
        <source>&amp;Never follow:</source>
        <comment>Caption in the General pane, before the list of such players</comment>
        <translation>&amp;No seguir nunca:</translation>
    </message>
    <message>
        <source>&amp;Turn the wheel&apos;s direction</source>
        <comment>Check box in the General pane: which way a mouse wheel turns the volume</comment>
        <translation>&amp;Invertir el sentido de la rueda</translation>
    </message>
    <message>
        <source>If turning it upwards makes the music quieter.</source>
        <comment>Below the check box &quot;Turn the wheel&apos;s direction&quot;</comment>
        <translation>Si al girarla hacia arriba la música suena más baja.</translation>
    </message>
    <message>
        <source>Volume:</source>
        <comment>Caption in the General pane, before the choice of the wheel&apos;s direction</comment>
        <translation>Volumen:</translation>
    </message>
    <message>
        <source>&amp;Start with the session</source>
        <comment>Check box in the General pane</comment>
        <translation>Iniciar &amp;con la sesión</translation>
    </message>
    <message>
        <source>Tunedeck is there when you log in.</source>
        <comment>Below the check box &quot;Start with the session&quot;</comment>
        <translation>Tunedeck está ahí al iniciar la sesión.</translation>
    </message>
    <message>
        <source>Show &amp;only while a player is there</source>
        <comment>Check box in the General pane: about the window</comment>
        <translation>Mostrar s&amp;olo mientras haya un reproductor</translation>
    </message>
    <message>
        <source>The window goes with the last player and comes back with the next.</source>
        <comment>Below the check box &quot;Show only while a player is there&quot;</comment>
        <translation>La ventana se va con el último reproductor y vuelve con el siguiente.</translation>
    </message>
    <message>
        <source>Shortcuts in &amp;every window</source>
        <comment>Check box in the General pane: keyboard shortcuts</comment>
        <translation>&amp;Atajos en todas las ventanas</translation>
    </message>
    <message>
        <source>The desktop lets you choose the keys.</source>
        <comment>Below the check box &quot;Shortcuts in every window&quot;</comment>
        <translation>El escritorio le permite elegir las teclas.</translation>
    </message>
    <message>
        <source>Window:</source>
        <comment>Caption in the General pane, before the choices of when the window is there</comment>
        <translation>Ventana:</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <comment>Caption in the General pane, before the choice of shortcuts in every window</comment>
        <translation>Teclado:</translation>
    </message>
</context>
<context>
    <name>tunedeck::SoftwareUpdater</name>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Actualización de software</translation>
    </message>
    <message>
        <source>Tunedeck&apos;s updater is missing or belongs to another version.</source>
        <comment>Updates: title of an error</comment>
        <translation>El actualizador de Tunedeck falta o pertenece a otra versión.</translation>
    </message>
    <message>
        <source>Install Tunedeck again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Vuelva a instalar Tunedeck.</translation>
    </message>
</context>
<context>
    <name>tunedeck::TimeLabelMenu</name>
    <message>
        <source>Menu</source>
        <comment>Title of the time label&apos;s context menu</comment>
        <translation>Menú</translation>
    </message>
    <message>
        <source>Remaining Time</source>
        <comment>For UI labels: Remaining Time</comment>
        <translation>Tiempo restante</translation>
    </message>
    <message>
        <source>Duration</source>
        <comment>For UI labels: Duration</comment>
        <translation>Duración</translation>
    </message>
</context>
<context>
    <name>tunedeck::TrackDisplay</name>
    <message>
        <source>Elapsed Time</source>
        <comment>For UI labels: Elapsed Time</comment>
        <translation>Tiempo transcurrido</translation>
    </message>
    <message>
        <source>Playing through %1</source>
        <comment>Tooltip of the display</comment>
        <extracomment>%1 is an output or several, such as &quot;Headphones and Kitchen&quot;.</extracomment>
        <translation>Reproduciendo por %1</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdatePreferencesViewController</name>
    <message>
        <source>Check for Updates…</source>
        <comment>Button in the Updates pane</comment>
        <translation>Buscar actualizaciones…</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>Button in the Updates pane: opens the page about updates</comment>
        <translation>&amp;Ayuda</translation>
    </message>
    <message>
        <source>Tunedeck %1</source>
        <comment>In the Updates pane; %1 is the version that runs</comment>
        <translation>Tunedeck %1</translation>
    </message>
    <message>
        <source>Tunedeck looks for a newer version only when you ask. You choose whether to download it.</source>
        <comment>In the Updates pane</comment>
        <translation>Tunedeck solo busca una versión más reciente cuando usted se lo pide. Usted elige si quiere descargarla.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself. If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>In the Updates pane</comment>
        <translation>Esta copia de Tunedeck no busca versiones nuevas por sí misma. Si venía con su sistema, las versiones nuevas llegan con las actualizaciones del sistema. Si la compiló usted, vuelva a compilarla con fuentes más recientes.</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdateWindow</name>
    <message>
        <source>The update server could not be reached.</source>
        <comment>Updates: title of an error</comment>
        <translation>No se pudo contactar con el servidor de actualizaciones.</translation>
    </message>
    <message>
        <source>Make sure that this computer is connected to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Asegúrese de que este equipo está conectado a Internet y vuelva a buscar actualizaciones.</translation>
    </message>
    <message>
        <source>The connection to the update server is not secure.</source>
        <comment>Updates: title of an error</comment>
        <translation>La conexión con el servidor de actualizaciones no es segura.</translation>
    </message>
    <message>
        <source>Nothing was downloaded. Make sure that this computer&apos;s date and time are right, or try again on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>No se descargó nada. Asegúrese de que la fecha y la hora de este equipo son correctas o inténtelo de nuevo desde otra red.</translation>
    </message>
    <message>
        <source>The update server redirects too often.</source>
        <comment>Updates: title of an error</comment>
        <translation>El servidor de actualizaciones redirige demasiadas veces.</translation>
    </message>
    <message>
        <source>The update server stopped responding or is too slow.</source>
        <comment>Updates: title of an error</comment>
        <translation>El servidor de actualizaciones ha dejado de responder o es demasiado lento.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, or check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Compruebe su conexión a Internet o vuelva a buscar actualizaciones más tarde.</translation>
    </message>
    <message>
        <source>The update server answered with an error.</source>
        <comment>Updates: title of an error</comment>
        <translation>El servidor de actualizaciones respondió con un error.</translation>
    </message>
    <message>
        <source>Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Vuelva a buscar actualizaciones más tarde.</translation>
    </message>
    <message>
        <source>The connection to the update server was lost.</source>
        <comment>Updates: title of an error</comment>
        <translation>Se perdió la conexión con el servidor de actualizaciones.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Compruebe su conexión a Internet y vuelva a buscar actualizaciones.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck cannot check for updates.</source>
        <comment>Updates: title of an error</comment>
        <translation>Esta copia de Tunedeck no puede buscar actualizaciones.</translation>
    </message>
    <message>
        <source>It was built with an unusable address or key. Download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Se compiló con una dirección o una clave que no se puede usar. Descargue una versión nueva del mismo sitio del que obtuvo esta.</translation>
    </message>
    <message>
        <source>The software updater could not be opened.</source>
        <comment>Updates: title of an error</comment>
        <translation>No se pudo abrir el actualizador de software.</translation>
    </message>
    <message>
        <source>Look for it among your desktop&apos;s applications.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Búsquelo entre las aplicaciones de su escritorio.</translation>
    </message>
    <message>
        <source>The list of updates is too long.</source>
        <comment>Updates: title of an error</comment>
        <translation>La lista de actualizaciones es demasiado larga.</translation>
    </message>
    <message>
        <source>Tunedeck stopped reading it. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck dejó de leerla. Vuelva a buscar actualizaciones más tarde.</translation>
    </message>
    <message>
        <source>The list of updates could not be read.</source>
        <comment>Updates: title of an error</comment>
        <translation>No se pudo leer la lista de actualizaciones.</translation>
    </message>
    <message>
        <source>A new version is available, but it cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Hay una versión nueva, pero no es de confianza.</translation>
    </message>
    <message>
        <source>The server does not say how to verify it, so it was not downloaded. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>El servidor no indica cómo verificarla, por lo que no se descargó. Vuelva a buscar actualizaciones más tarde.</translation>
    </message>
    <message>
        <source>The download is incomplete.</source>
        <comment>Updates: title of an error</comment>
        <translation>La descarga está incompleta.</translation>
    </message>
    <message>
        <source>It was deleted. Check your connection to the internet, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Se ha eliminado. Compruebe su conexión a Internet e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>The download is not the expected file.</source>
        <comment>Updates: title of an error</comment>
        <translation>La descarga no es el archivo esperado.</translation>
    </message>
    <message>
        <source>It is larger than announced, so it was deleted. Try again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Es más grande de lo anunciado y se ha eliminado. Inténtelo de nuevo más tarde.</translation>
    </message>
    <message>
        <source>The download cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>La descarga no es de confianza.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. It was deleted. Try again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>No procede de los autores de Tunedeck o se modificó por el camino. Se ha eliminado. Inténtelo de nuevo más tarde o desde otra red.</translation>
    </message>
    <message>
        <source>The download could not be saved.</source>
        <comment>Updates: title of an error</comment>
        <translation>No se pudo guardar la descarga.</translation>
    </message>
    <message>
        <source>Make sure that your download folder has free space and that you may write to it, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Asegúrese de que hay espacio libre en su carpeta de descargas y de que tiene permiso para escribir en ella, e inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Actualización de software</translation>
    </message>
    <message>
        <source>Progress</source>
        <comment>Updates: for accessibility, the progress bar</comment>
        <translation>Progreso</translation>
    </message>
    <message>
        <source>What is new</source>
        <comment>Updates: for accessibility, the text on what is new in a version</comment>
        <translation>Novedades</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <comment>Updates: a search is under way</comment>
        <translation>Buscando actualizaciones…</translation>
    </message>
    <message>
        <source>Tunedeck is up to date.</source>
        <comment>Updates: there is no newer version</comment>
        <translation>Tunedeck está actualizado.</translation>
    </message>
    <message>
        <source>You have version %1, which is the newest.</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Tiene la versión %1, que es la más reciente.</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available.</source>
        <comment>Updates: there is a newer version</comment>
        <translation>Hay una nueva versión de Tunedeck disponible.</translation>
    </message>
    <message>
        <source>Version %1 is available; you have version %2.</source>
        <comment>Updates: %1 and %2 are versions</comment>
        <translation>La versión %1 está disponible; usted tiene la versión %2.</translation>
    </message>
    <message>
        <source>&amp;Download</source>
        <comment>Updates: button that downloads the new version</comment>
        <translation>&amp;Descargar</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <comment>Updates: button that leaves the new version for another day</comment>
        <translation>&amp;Más tarde</translation>
    </message>
    <message>
        <source>Downloading Tunedeck %1…</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Descargando Tunedeck %1…</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>Updates: how much has come of a download, such as 1.2 MB of 3 MB</comment>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>Checking that the download is genuine…</source>
        <comment>Updates: the file&apos;s signature is looked at</comment>
        <translation>Comprobando que la descarga es auténtica…</translation>
    </message>
    <message>
        <source>The new version has been downloaded.</source>
        <comment>Updates: the file is there</comment>
        <translation>Se ha descargado la nueva versión.</translation>
    </message>
    <message>
        <source>It was verified and saved as “%1” in “%2”. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>Se ha verificado y guardado como «%1» en «%2». Para instalarla, salga de Tunedeck y abra el archivo.</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <comment>Updates: button that shows the file in the file manager</comment>
        <translation>&amp;Mostrar en la carpeta</translation>
    </message>
    <message>
        <source>&amp;Open Software Updater</source>
        <comment>Updates: button that starts the system&apos;s own program for updates</comment>
        <translation>&amp;Abrir el actualizador de software</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available, but not for your system.</source>
        <comment>Updates: there is a newer version, which needs a newer system</comment>
        <translation>Hay una versión nueva de Tunedeck, pero no para su sistema.</translation>
    </message>
    <message>
        <source>Version %1 needs version %2 of your system or a later one. You have version %3, the newest that runs on your system.</source>
        <comment>Updates: %1 and %3 are versions of Tunedeck, %2 is one of the operating system</comment>
        <translation>La versión %1 necesita la versión %2 de su sistema o una posterior. Tiene la versión %3, la más reciente que funciona en su sistema.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Esta copia de Tunedeck no busca versiones nuevas por sí misma.</translation>
    </message>
    <message>
        <source>If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Si venía con su sistema, las versiones nuevas llegan con las actualizaciones del sistema. Si la compiló usted, vuelva a compilarla con fuentes más recientes.</translation>
    </message>
    <message>
        <source>The list of updates is not signed.</source>
        <comment>Updates: title of an error</comment>
        <translation>La lista de actualizaciones no está firmada.</translation>
    </message>
    <message>
        <source>Tunedeck trusts only a list that its makers have signed. Check for updates again later, or download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck solo se fía de una lista firmada por sus creadores. Vuelva a buscar actualizaciones más tarde o descargue una versión nueva de donde obtuvo esta.</translation>
    </message>
    <message>
        <source>The list of updates cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>La lista de actualizaciones no es de fiar.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>No procede de los creadores de Tunedeck o fue modificada por el camino. Vuelva a buscar actualizaciones más tarde o en otra red.</translation>
    </message>
    <message>
        <source>The list of updates is older than one seen before.</source>
        <comment>Updates: title of an error</comment>
        <translation>La lista de actualizaciones es más antigua que una ya vista.</translation>
    </message>
    <message>
        <source>Tunedeck does not go back to an older list, which may hide new versions. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck no vuelve a una lista más antigua, que puede ocultar versiones nuevas. Vuelva a buscar actualizaciones más tarde o en otra red.</translation>
    </message>
    <message>
        <source>The list of updates has expired.</source>
        <comment>Updates: title of an error</comment>
        <translation>La lista de actualizaciones ha caducado.</translation>
    </message>
    <message>
        <source>This computer&apos;s date is %1. If that is wrong, set the date. If it is right, check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error; %1 is a date</comment>
        <translation>La fecha de este equipo es %1. Si es incorrecta, ajústela. Si es correcta, vuelva a buscar actualizaciones más tarde o en otra red.</translation>
    </message>
    <message>
        <source>The file is not the one that was downloaded.</source>
        <comment>Updates: title of an error</comment>
        <translation>El archivo no es el que se descargó.</translation>
    </message>
    <message>
        <source>It was changed, moved or deleted. Do not open it. Check for updates again to download a new one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Fue modificado, movido o eliminado. No lo abra. Vuelva a buscar actualizaciones para descargar uno nuevo.</translation>
    </message>
    <message>
        <source>The file is genuine.</source>
        <comment>Updates: the file was verified again</comment>
        <translation>El archivo es auténtico.</translation>
    </message>
    <message>
        <source>“%1” in “%2” is the file that Tunedeck&apos;s makers signed. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>«%1» en «%2» es el archivo que firmaron los autores de Tunedeck. Para instalarlo, salga de Tunedeck y abra el archivo.</translation>
    </message>
    <message>
        <source>&amp;Verify Again</source>
        <comment>Updates: button that checks once more that the saved file is genuine</comment>
        <translation>&amp;Verificar de nuevo</translation>
    </message>
    <message>
        <source>The signature of the list of updates could not be fetched.</source>
        <comment>Updates: title of an error</comment>
        <translation>No se ha podido obtener la firma de la lista de actualizaciones.</translation>
    </message>
    <message>
        <source>The update server does not have the file.</source>
        <comment>Updates: title of an error</comment>
        <translation>El servidor de actualizaciones no tiene el archivo.</translation>
    </message>
</context>
<context>
    <name>tunedeck::ViewController</name>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Reproducir</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>For UI labels: Stop</comment>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Pause</source>
        <comment>For UI labels: Pause</comment>
        <translation>Pausar</translation>
    </message>
</context>
</TS>
