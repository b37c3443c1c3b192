<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>DesktopAction</name>
    <message>
        <source>Show or hide the window</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Fenster zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Wiedergabe oder Pause</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Vorheriger Titel</translation>
    </message>
    <message>
        <source>Five seconds forward</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Fünf Sekunden vor</translation>
    </message>
    <message>
        <source>Five seconds back</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Fünf Sekunden zurück</translation>
    </message>
    <message>
        <source>Volume up</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Lauter</translation>
    </message>
    <message>
        <source>Volume down</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Leiser</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Wiedergabelisten zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Show the player</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Player anzeigen</translation>
    </message>
    <message>
        <source>Keep above all other windows</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Immer im Vordergrund</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>A small window that controls the running music player</source>
        <comment>For --help</comment>
        <translation>Ein kleines Fenster, das den laufenden Musikplayer steuert</translation>
    </message>
    <message>
        <source>Carries out &lt;name&gt; in the running Tunedeck, or starts Tunedeck for it. &lt;name&gt; is one of: %1.</source>
        <comment>For --help; &lt;name&gt; stays as it is, %1 is a list of names</comment>
        <translation>Führt &lt;name&gt; im laufenden Tunedeck aus oder startet Tunedeck dafür. &lt;name&gt; ist eine dieser Aktionen: %1.</translation>
    </message>
    <message>
        <source>unknown action; see --help</source>
        <comment>On the command line</comment>
        <translation>unbekannte Aktion; siehe --help</translation>
    </message>
    <message>
        <source>already running, but not responding</source>
        <comment>On the command line</comment>
        <translation>läuft bereits, reagiert aber nicht</translation>
    </message>
    <message>
        <source>there is no session bus, so no music player can be reached</source>
        <comment>On the command line</comment>
        <translation>es gibt keinen Sitzungsbus, also ist kein Musikplayer erreichbar</translation>
    </message>
    <message>
        <source>For sessions that start Tunedeck: opens the window without the keyboard focus, and only while a player is there if the preferences say so.</source>
        <comment>For --help</comment>
        <translation>Für Sitzungen, die Tunedeck starten: öffnet das Fenster ohne Tastaturfokus, und nur solange ein Player da ist, wenn es so eingestellt ist.</translation>
    </message>
</context>
<context>
    <name>tunedeck</name>
    <message>
        <source>Music is not open</source>
        <comment>&apos;Music is not open&apos; displayed in LCD</comment>
        <extracomment>Also the tooltip of the empty playlist picker.</extracomment>
        <translation>Kein Musikplayer geöffnet</translation>
    </message>
    <message>
        <source>No Song</source>
        <comment>&apos;No Song&apos; displayed in LCD</comment>
        <translation>Kein Titel</translation>
    </message>
    <message>
        <source>%1 cannot seek in this track</source>
        <comment>Tooltip of a disabled control</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 kann in diesem Titel nicht springen</translation>
    </message>
    <message>
        <source>%1 has no volume control</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 hat keinen Lautstärkeregler</translation>
    </message>
    <message>
        <source>%1 has no shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 hat keine Zufallswiedergabe</translation>
    </message>
    <message>
        <source>%1 has no repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 hat keine Wiederholung</translation>
    </message>
    <message>
        <source>%1 keeps its own volume</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 behält die eigene Lautstärke</translation>
    </message>
    <message>
        <source>%1 keeps its own shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 behält die eigene Zufallswiedergabe</translation>
    </message>
    <message>
        <source>%1 keeps its own repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 behält die eigene Wiederholung</translation>
    </message>
    <message>
        <source>%1 is not responding</source>
        <comment>In the LCD while the player hangs</comment>
        <extracomment>%1 is the player. Also the tooltip of the controls that are then disabled.</extracomment>
        <translation>%1 reagiert nicht</translation>
    </message>
    <message>
        <source>Music</source>
        <comment>In place of the name of a player that has none: the music player</comment>
        <translation>Der Musikplayer</translation>
    </message>
    <message>
        <source>Automatic (%1)</source>
        <comment>In the list of players to follow: the one that plays, which is %1 now</comment>
        <translation>Automatisch (%1)</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>In the list of players to follow: the one that plays</comment>
        <translation>Automatisch</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>In the list of players to follow: the player, and the track that it plays</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (not open)</source>
        <comment>In the list of players to follow: a chosen player that does not run</comment>
        <translation>%1 (nicht geöffnet)</translation>
    </message>
    <message>
        <source>Follow</source>
        <comment>Menu title: which player to follow</comment>
        <translation>Player folgen</translation>
    </message>
    <message>
        <source>Never Follow %1</source>
        <comment>Menu command: leave the player %1 out for good</comment>
        <translation>%1 nie folgen</translation>
    </message>
    <message>
        <source>Waiting for %1</source>
        <comment>Tooltip of the LCD: %1 is the player to follow</comment>
        <translation>Warten auf %1</translation>
    </message>
    <message>
        <source>Show Player</source>
        <comment>Menu command that is disabled</comment>
        <translation>Player anzeigen</translation>
    </message>
    <message>
        <source>Show %1</source>
        <comment>Menu command: show the player&apos;s own window</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 anzeigen</translation>
    </message>
    <message>
        <source>%1 cannot show its window</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>%1 kann kein eigenes Fenster zeigen</translation>
    </message>
    <message>
        <source>Live audio has no other tracks</source>
        <comment>Tooltip of what goes to the next and previous track, while it is disabled</comment>
        <translation>Live-Audio hat keine anderen Titel</translation>
    </message>
    <message>
        <source>%1 plays no sound yet</source>
        <comment>In the menu Play Through</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 gibt noch keinen Ton wieder</translation>
    </message>
    <message>
        <source>%1 plays on another device</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 spielt auf einem anderen Gerät</translation>
    </message>
    <message>
        <source>There is no sound server</source>
        <comment>In the menu Play Through</comment>
        <translation>Es gibt keinen Soundserver</translation>
    </message>
    <message>
        <source>The sound server is not responding</source>
        <comment>In the menu Play Through</comment>
        <translation>Der Soundserver reagiert nicht</translation>
    </message>
    <message>
        <source>The sound of %1 cannot be told from that of others</source>
        <comment>In the menu Play Through</comment>
        <translation>Der Ton von %1 lässt sich nicht von anderem unterscheiden</translation>
    </message>
    <message>
        <source>Default</source>
        <comment>In the menu Play Through: the output that the desktop is set to</comment>
        <translation>Standard</translation>
    </message>
    <message>
        <source>%1 chooses its output itself</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 wählt seine Ausgabe selbst</translation>
    </message>
    <message>
        <source>Play Through</source>
        <comment>Title of a menu: the loudspeakers or headphones that the player plays to</comment>
        <translation>Wiedergabe über</translation>
    </message>
    <message>
        <source>The sandbox that Tunedeck runs in lets it start no other programs. Start your player yourself.</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>Die Sandbox, in der Tunedeck läuft, lässt es keine anderen Programme starten. Starten Sie Ihren Player selbst.</translation>
    </message>
    <message>
        <source>The sandbox keeps the sound server from Tunedeck</source>
        <comment>In the menu Play Through</comment>
        <translation>Die Sandbox trennt Tunedeck vom Soundserver</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot;</source>
        <comment>Command to open main Music app</comment>
        <translation>Musikplayer öffnen</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot; (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Musikplayer öffnen (in einer Sandbox nicht möglich)</translation>
    </message>
</context>
<context>
    <name>tunedeck::AboutWindow</name>
    <message>
        <source>About</source>
        <comment>About window title</comment>
        <translation>Über Tunedeck</translation>
    </message>
    <message>
        <source>Version %1 (%2)</source>
        <comment>About window: the version and the number of its build</comment>
        <translation>Version %1 (%2)</translation>
    </message>
    <message>
        <source>Credits</source>
        <comment>For accessibility: the about window&apos;s text</comment>
        <translation>Mitwirkende</translation>
    </message>
</context>
<context>
    <name>tunedeck::AppPreferencesWindowController</name>
    <message>
        <source>General</source>
        <comment>Title for General tab</comment>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Interface</source>
        <comment>Title for Interface tab</comment>
        <translation>Oberfläche</translation>
    </message>
    <message>
        <source>Updates</source>
        <comment>Title for Updates tab</comment>
        <translation>Aktualisierungen</translation>
    </message>
    <message>
        <source>Panes</source>
        <comment>For accessibility: the toolbar of the preferences window</comment>
        <translation>Bereiche</translation>
    </message>
    <message>
        <source>Preferences</source>
        <comment>Window Title for Preferences</comment>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>tunedeck::ApplicationInstance</name>
    <message>
        <source>Tunedeck is busy</source>
        <comment>On the command line: why an action is refused</comment>
        <translation>Tunedeck ist beschäftigt</translation>
    </message>
</context>
<context>
    <name>tunedeck::ControlAvailability</name>
    <message>
        <source>Play or stop playing live audio</source>
        <comment>For UI labels: Play or stop playing live audio</comment>
        <translation>Livestream abspielen oder beenden</translation>
    </message>
    <message>
        <source>Play or pause the current track</source>
        <comment>For UI labels: Play or pause the current track</comment>
        <translation>Aktuellen Titel abspielen oder anhalten</translation>
    </message>
    <message>
        <source>Muted – turn the volume up to hear it</source>
        <comment>Tooltip of the quiet speaker</comment>
        <translation>Stummgeschaltet – lauter stellen, um etwas zu hören</translation>
    </message>
    <message>
        <source>Volume, set on the sound server</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Lautstärke, am Soundserver eingestellt</translation>
    </message>
    <message>
        <source>Volume, set in %1</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Lautstärke, in %1 eingestellt</translation>
    </message>
</context>
<context>
    <name>tunedeck::DesktopIntegration</name>
    <message>
        <source>Waiting for the desktop…</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Warten auf die Arbeitsumgebung …</translation>
    </message>
    <message>
        <source>The keys are in the desktop&apos;s keyboard settings.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Die Tasten stehen in den Tastatureinstellungen der Arbeitsumgebung.</translation>
    </message>
    <message>
        <source>The desktop refuses.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Die Arbeitsumgebung lehnt das ab.</translation>
    </message>
    <message>
        <source>This desktop offers none. Its keyboard settings can run “tunedeck --action next” instead.</source>
        <comment>Below a check box in the preferences: keyboard shortcuts for every window</comment>
        <translation>Diese Arbeitsumgebung bietet keine an. Ihre Tastatureinstellungen können stattdessen „tunedeck --action next“ ausführen.</translation>
    </message>
    <message>
        <source>You have changed the entry in the autostart folder, so it stays as it is.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>Sie haben den Eintrag im Autostart-Ordner geändert, daher bleibt er, wie er ist.</translation>
    </message>
    <message>
        <source>The autostart folder cannot be changed.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>Der Autostart-Ordner lässt sich nicht ändern.</translation>
    </message>
    <message>
        <source>Tunedeck is at hand when you log in.</source>
        <comment>The desktop may show it when it asks whether to allow this</comment>
        <translation>Tunedeck ist nach der Anmeldung griffbereit.</translation>
    </message>
    <message>
        <source>The desktop gives no usable answer.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Die Arbeitsumgebung gibt keine brauchbare Antwort.</translation>
    </message>
</context>
<context>
    <name>tunedeck::DockMenuItems</name>
    <message>
        <source>Now Playing</source>
        <comment>For UI labels: Now Playing</comment>
        <translation>Aktuelle Wiedergabe</translation>
    </message>
    <message>
        <source>Track</source>
        <comment>For UI labels: Track</comment>
        <translation>Titel</translation>
    </message>
    <message>
        <source>Artist</source>
        <comment>For UI labels: Artist</comment>
        <translation>Interpret</translation>
    </message>
    <message>
        <source>Album</source>
        <comment>For UI labels: Album</comment>
        <translation>Album</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Vorheriger Titel</translation>
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
        <translation>Tunedeck-Hilfe</translation>
    </message>
    <message>
        <source>Page</source>
        <comment>For accessibility: the text of the help page</comment>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>Button of the help window: to the page shown before</comment>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <comment>Button of the help window: undoes Back</comment>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Search the help</source>
        <comment>For accessibility: the help window&apos;s search field</comment>
        <translation>Hilfe durchsuchen</translation>
    </message>
    <message>
        <source>Search</source>
        <comment>In the help window&apos;s empty search field</comment>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search results</source>
        <comment>For accessibility: what the help&apos;s search found</comment>
        <translation>Suchergebnisse</translation>
    </message>
    <message>
        <source>Contents</source>
        <comment>For accessibility: the list of the help&apos;s pages</comment>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <comment>In place of what the help&apos;s search found</comment>
        <translation>Nichts gefunden</translation>
    </message>
</context>
<context>
    <name>tunedeck::InterfacePreferencesViewController</name>
    <message>
        <source>&amp;Classic appearance</source>
        <comment>Check box in the Interface pane</comment>
        <translation>&amp;Klassisches Erscheinungsbild</translation>
    </message>
    <message>
        <source>The window stays light, even on a dark desktop.</source>
        <comment>Below the check box &quot;Classic appearance&quot;</comment>
        <translation>Das Fenster bleibt auch bei dunkler Arbeitsumgebung hell.</translation>
    </message>
    <message>
        <source>&amp;Dark icon on a dark desktop</source>
        <comment>Check box in the Interface pane: the program&apos;s icon in the dock</comment>
        <translation>&amp;Dunkles Symbol bei dunkler Arbeitsumgebung</translation>
    </message>
    <message>
        <source>The icon in the dock is light or dark, like the desktop.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;</comment>
        <translation>Das Symbol im Dock wechselt mit der Arbeitsumgebung zwischen Hell und Dunkel.</translation>
    </message>
    <message>
        <source>This desktop always shows the same icon.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;, where it has no effect</comment>
        <translation>Diese Arbeitsumgebung zeigt immer dasselbe Symbol.</translation>
    </message>
    <message>
        <source>&amp;Hide the volume buttons</source>
        <comment>Check box in the Interface pane</comment>
        <translation>&amp;Lautstärkeknöpfe ausblenden</translation>
    </message>
    <message>
        <source>These are the two speakers beside the volume slider.</source>
        <comment>Below the check box &quot;Hide the volume buttons&quot;</comment>
        <translation>Das sind die beiden Lautsprecher neben dem Lautstärkeregler.</translation>
    </message>
</context>
<context>
    <name>tunedeck::KeepAbove</name>
    <message>
        <source>Keep Above All Other Windows (Floating, on Every Workspace)</source>
        <comment>Menu command; on Sway</comment>
        <translation>Immer im Vordergrund (schwebend, auf jeder Arbeitsfläche)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Pinned)</source>
        <comment>Menu command; pinned: Hyprland&apos;s word</comment>
        <translation>Immer im Vordergrund (angeheftet)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Restarts Tunedeck)</source>
        <comment>Menu command</comment>
        <translation>Immer im Vordergrund (startet Tunedeck neu)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (The Desktop Refuses)</source>
        <comment>Menu command that had no effect</comment>
        <translation>Immer im Vordergrund (die Arbeitsumgebung verweigert es)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible on Wayland)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Immer im Vordergrund (unter Wayland nicht möglich)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows</source>
        <comment>For Menu Command labels: Keep Above All Other Windows</comment>
        <translation>Immer im Vordergrund</translation>
    </message>
    <message>
        <source>KWin does this for Tunedeck.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>KWin erledigt das für Tunedeck.</translation>
    </message>
    <message>
        <source>Sway keeps it above tiled windows, but not above others that float.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Sway hält es vor gekachelten Fenstern, aber nicht vor anderen, die schweben.</translation>
    </message>
    <message>
        <source>Hyprland floats and pins it on every workspace.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Hyprland lässt es schweben und heftet es auf jeder Arbeitsfläche an.</translation>
    </message>
    <message>
        <source>Tunedeck restarts through XWayland, where it can do this. It may look less sharp.</source>
        <comment>Tooltip of the menu command to keep the window above; less sharp: on a scaled screen</comment>
        <translation>Tunedeck startet über XWayland neu, wo es das kann. Es ist dann vielleicht weniger scharf.</translation>
    </message>
    <message>
        <source>Use the window&apos;s menu instead: Alt+Space in GNOME, Alt+F3 in KDE Plasma.</source>
        <comment>Tooltip of the menu command to keep the window above all others</comment>
        <translation>Nutzen Sie stattdessen das Fenstermenü: Alt+Leertaste in GNOME, Alt+F3 in KDE Plasma.</translation>
    </message>
    <message>
        <source>Tunedeck would have to restart through XWayland; choose the command in its Window menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>Tunedeck müsste dafür über XWayland neu starten; wählen Sie den Befehl in seinem Menü „Fenster“</translation>
    </message>
    <message>
        <source>On Wayland only the desktop can keep a window above all others; see the window&apos;s menu</source>
        <comment>On the command line: why the action is refused</comment>
        <translation>Unter Wayland kann nur der Desktop ein Fenster im Vordergrund halten; siehe das Fenstermenü</translation>
    </message>
    <message>
        <source>The desktop refuses; see the window&apos;s menu</source>
        <comment>On the command line: the desktop has not kept the window above all others</comment>
        <translation>Die Arbeitsumgebung lehnt das ab; siehe das Fenstermenü</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Immer im Vordergrund (in einer Sandbox nicht möglich)</translation>
    </message>
    <message>
        <source>The sandbox keeps Tunedeck from the desktop; see the window&apos;s menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>Die Sandbox trennt Tunedeck vom Desktop; siehe das Fenstermenü</translation>
    </message>
</context>
<context>
    <name>tunedeck::LcdView</name>
    <message>
        <source>Live</source>
        <comment>In place of the times while a live stream plays</comment>
        <translation>Live</translation>
    </message>
    <message>
        <source>Position</source>
        <comment>For accessibility: the progress slider</comment>
        <translation>Position</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>The info button</comment>
        <translation>Wiedergabelisten ein- oder ausblenden</translation>
    </message>
</context>
<context>
    <name>tunedeck::MainMenu</name>
    <message>
        <source>File</source>
        <comment>Menu title</comment>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Controls</source>
        <comment>Menu title</comment>
        <translation>Steuerung</translation>
    </message>
    <message>
        <source>Window</source>
        <comment>Menu title</comment>
        <translation>Fenster</translation>
    </message>
    <message>
        <source>Help</source>
        <comment>Menu title</comment>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>About Tunedeck</source>
        <comment>Menu command</comment>
        <translation>Über Tunedeck</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <comment>Menu command</comment>
        <translation>Nach Aktualisierungen suchen …</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <comment>Menu command</comment>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Quit</source>
        <comment>Menu command</comment>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Close Window</source>
        <comment>Menu command</comment>
        <translation>Fenster schließen</translation>
    </message>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Vorheriger Titel</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <comment>Menu command</comment>
        <translation>Lauter</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <comment>Menu command</comment>
        <translation>Leiser</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Menu command</comment>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Menu command</comment>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Hide Playlists</source>
        <comment>Menu command: close the drawer</comment>
        <translation>Wiedergabelisten ausblenden</translation>
    </message>
    <message>
        <source>Show Playlists</source>
        <comment>Menu command: open the drawer</comment>
        <translation>Wiedergabelisten einblenden</translation>
    </message>
    <message>
        <source>Tunedeck Help</source>
        <comment>Menu command</comment>
        <translation>Tunedeck-Hilfe</translation>
    </message>
    <message>
        <source>Terms and Conditions</source>
        <comment>Menu command</comment>
        <translation>Nutzungsbedingungen</translation>
    </message>
    <message>
        <source>Run Through XWayland</source>
        <comment>Menu command that can be checked</comment>
        <translation>Über XWayland ausführen</translation>
    </message>
    <message>
        <source>Most desktops can then keep the window above others. It may look less sharp.</source>
        <comment>Tooltip of the menu command to run Tunedeck through XWayland; less sharp: on a scaled screen</comment>
        <translation>Die meisten Arbeitsumgebungen können das Fenster dann über anderen halten. Es ist vielleicht weniger scharf.</translation>
    </message>
    <message>
        <source>Follow Automatically</source>
        <comment>Menu command: stop waiting for the chosen player</comment>
        <translation>Automatisch folgen</translation>
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
        <translation>Wieder &amp;folgen</translation>
    </message>
    <message>
        <source>Players that are never followed</source>
        <comment>For accessibility: a list in the General pane</comment>
        <translation>Player, denen nie gefolgt wird</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlayerView</name>
    <message>
        <source>Close</source>
        <comment>Window button</comment>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Window button</comment>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Window button</comment>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Transport button</comment>
        <translation>Vorheriger Titel</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Transport button</comment>
        <translation>Wiedergabe oder Pause</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Transport button</comment>
        <translation>Nächster Titel</translation>
    </message>
    <message>
        <source>Silence</source>
        <comment>Button at the quiet end of the volume slider</comment>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>Volume</source>
        <comment>Volume slider</comment>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>Full volume</source>
        <comment>Button at the loud end of the volume slider</comment>
        <translation>Volle Lautstärke</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlaylistView</name>
    <message>
        <source>Playlist:</source>
        <comment>Caption in the drawer, before the playlist picker</comment>
        <translation>Liste:</translation>
    </message>
    <message>
        <source>Playlist</source>
        <comment>For accessibility: the playlist picker</comment>
        <translation>Wiedergabeliste</translation>
    </message>
    <message>
        <source>Done</source>
        <comment>Button in the drawer: play the chosen playlist</comment>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Play the chosen playlist</source>
        <comment>Tooltip of the done button in the drawer</comment>
        <translation>Ausgewählte Wiedergabeliste abspielen</translation>
    </message>
    <message>
        <source>Shuffle</source>
        <comment>Button in the drawer</comment>
        <translation>Zufallswiedergabe</translation>
    </message>
    <message>
        <source>Repeat</source>
        <comment>Button in the drawer</comment>
        <translation>Wiederholung</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlaylistViewController</name>
    <message>
        <source>Repeat: off</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Wiederholung: aus</translation>
    </message>
    <message>
        <source>Repeat: one</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Wiederholung: ein Titel</translation>
    </message>
    <message>
        <source>Repeat: all</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Wiederholung: alle Titel</translation>
    </message>
    <message>
        <source>Choose a playlist</source>
        <comment>Tooltip of the playlist picker</comment>
        <translation>Wiedergabeliste auswählen</translation>
    </message>
    <message>
        <source>The player has no playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Der Player hat keine Wiedergabelisten</translation>
    </message>
    <message>
        <source>There are no playlist files (.m3u, .m3u8, .pls, .xspf) in your music folder</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>In Ihrem Musikordner sind keine Wiedergabelisten-Dateien (.m3u, .m3u8, .pls, .xspf)</translation>
    </message>
    <message>
        <source>Waiting for the player&apos;s playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Warten auf die Wiedergabelisten des Players</translation>
    </message>
    <message>
        <source>This player neither offers playlists nor opens playlist files</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Dieser Player bietet weder Wiedergabelisten an noch öffnet er Wiedergabelisten-Dateien</translation>
    </message>
    <message>
        <source>Shuffle: on</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Zufallswiedergabe: ein</translation>
    </message>
    <message>
        <source>Shuffle: off</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Zufallswiedergabe: aus</translation>
    </message>
    <message>
        <source>There are more playlists than these</source>
        <comment>After the last playlist, and the playlist picker&apos;s tooltip</comment>
        <translation>Es gibt mehr Wiedergabelisten als diese</translation>
    </message>
</context>
<context>
    <name>tunedeck::PreferencesViewController</name>
    <message>
        <source>&amp;Remaining time</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>&amp;Restzeit</translation>
    </message>
    <message>
        <source>&amp;Duration</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>&amp;Dauer</translation>
    </message>
    <message>
        <source>&amp;Follow player:</source>
        <comment>Caption in the General pane, before the choice of the player</comment>
        <translation>Diesem &amp;Player folgen:</translation>
    </message>
    <message>
        <source>Automatic follows the player that is playing.</source>
        <comment>Below the choice of the player to follow</comment>
        <translation>„Automatisch“ folgt dem Player, der gerade spielt.</translation>
    </message>
    <message>
        <source>Time on the right:</source>
        <comment>Caption in the General pane: the display&apos;s time on the right</comment>
        <translation>Zeitangabe rechts:</translation>
    </message>
    <message>
        <source>&amp;Never follow:</source>
        <comment>Caption in the General pane, before the list of such players</comment>
        <translation>&amp;Nie folgen:</translation>
    </message>
    <message>
        <source>&amp;Turn the wheel&apos;s direction</source>
        <comment>Check box in the General pane: which way a mouse wheel turns the volume</comment>
        <translation>Dre&amp;hrichtung des Mausrads umkehren</translation>
    </message>
    <message>
        <source>If turning it upwards makes the music quieter.</source>
        <comment>Below the check box &quot;Turn the wheel&apos;s direction&quot;</comment>
        <translation>Falls die Musik leiser wird, wenn Sie es nach oben drehen.</translation>
    </message>
    <message>
        <source>Volume:</source>
        <comment>Caption in the General pane, before the choice of the wheel&apos;s direction</comment>
        <translation>Lautstärke:</translation>
    </message>
    <message>
        <source>&amp;Start with the session</source>
        <comment>Check box in the General pane</comment>
        <translation>Mit der &amp;Sitzung starten</translation>
    </message>
    <message>
        <source>Tunedeck is there when you log in.</source>
        <comment>Below the check box &quot;Start with the session&quot;</comment>
        <translation>Tunedeck ist nach der Anmeldung da.</translation>
    </message>
    <message>
        <source>Show &amp;only while a player is there</source>
        <comment>Check box in the General pane: about the window</comment>
        <translation>Nur &amp;zeigen, solange ein Player da ist</translation>
    </message>
    <message>
        <source>The window goes with the last player and comes back with the next.</source>
        <comment>Below the check box &quot;Show only while a player is there&quot;</comment>
        <translation>Das Fenster geht mit dem letzten Player und kommt mit dem nächsten wieder.</translation>
    </message>
    <message>
        <source>Shortcuts in &amp;every window</source>
        <comment>Check box in the General pane: keyboard shortcuts</comment>
        <translation>&amp;Tastenkürzel in jedem Fenster</translation>
    </message>
    <message>
        <source>The desktop lets you choose the keys.</source>
        <comment>Below the check box &quot;Shortcuts in every window&quot;</comment>
        <translation>Die Tasten wählen Sie in der Arbeitsumgebung.</translation>
    </message>
    <message>
        <source>Window:</source>
        <comment>Caption in the General pane, before the choices of when the window is there</comment>
        <translation>Fenster:</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <comment>Caption in the General pane, before the choice of shortcuts in every window</comment>
        <translation>Tastatur:</translation>
    </message>
</context>
<context>
    <name>tunedeck::SoftwareUpdater</name>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Softwareaktualisierung</translation>
    </message>
    <message>
        <source>Tunedeck&apos;s updater is missing or belongs to another version.</source>
        <comment>Updates: title of an error</comment>
        <translation>Das Aktualisierungsprogramm von Tunedeck fehlt oder gehört zu einer anderen Version.</translation>
    </message>
    <message>
        <source>Install Tunedeck again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Installieren Sie Tunedeck neu.</translation>
    </message>
</context>
<context>
    <name>tunedeck::TimeLabelMenu</name>
    <message>
        <source>Menu</source>
        <comment>Title of the time label&apos;s context menu</comment>
        <translation>Menü</translation>
    </message>
    <message>
        <source>Remaining Time</source>
        <comment>For UI labels: Remaining Time</comment>
        <translation>Restzeit</translation>
    </message>
    <message>
        <source>Duration</source>
        <comment>For UI labels: Duration</comment>
        <translation>Dauer</translation>
    </message>
</context>
<context>
    <name>tunedeck::TrackDisplay</name>
    <message>
        <source>Elapsed Time</source>
        <comment>For UI labels: Elapsed Time</comment>
        <translation>Bisher gespielt</translation>
    </message>
    <message>
        <source>Playing through %1</source>
        <comment>Tooltip of the display</comment>
        <extracomment>%1 is an output or several, such as &quot;Headphones and Kitchen&quot;.</extracomment>
        <translation>Wiedergabe über %1</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdatePreferencesViewController</name>
    <message>
        <source>Check for Updates…</source>
        <comment>Button in the Updates pane</comment>
        <translation>Nach Aktualisierungen suchen …</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>Button in the Updates pane: opens the page about updates</comment>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Tunedeck %1</source>
        <comment>In the Updates pane; %1 is the version that runs</comment>
        <translation>Tunedeck %1</translation>
    </message>
    <message>
        <source>Tunedeck looks for a newer version only when you ask. You choose whether to download it.</source>
        <comment>In the Updates pane</comment>
        <translation>Tunedeck sucht nur auf Ihren Wunsch nach einer neueren Version. Sie entscheiden, ob Sie sie herunterladen.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself. If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>In the Updates pane</comment>
        <translation>Diese Kopie von Tunedeck sucht nicht selbst nach neuen Versionen. Kam sie mit Ihrem System, kommen neue Versionen mit dessen Aktualisierungen. Haben Sie sie selbst erstellt, erstellen Sie sie neu aus neueren Quellen.</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdateWindow</name>
    <message>
        <source>The update server could not be reached.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Aktualisierungsserver konnte nicht erreicht werden.</translation>
    </message>
    <message>
        <source>Make sure that this computer is connected to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Stellen Sie sicher, dass dieser Rechner mit dem Internet verbunden ist, und suchen Sie dann erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The connection to the update server is not secure.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Verbindung zum Aktualisierungsserver ist nicht sicher.</translation>
    </message>
    <message>
        <source>Nothing was downloaded. Make sure that this computer&apos;s date and time are right, or try again on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Es wurde nichts heruntergeladen. Stellen Sie sicher, dass Datum und Uhrzeit dieses Rechners stimmen, oder versuchen Sie es in einem anderen Netzwerk erneut.</translation>
    </message>
    <message>
        <source>The update server redirects too often.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Aktualisierungsserver leitet zu oft weiter.</translation>
    </message>
    <message>
        <source>The update server stopped responding or is too slow.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Aktualisierungsserver reagiert nicht mehr oder ist zu langsam.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, or check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Überprüfen Sie Ihre Internetverbindung oder suchen Sie später erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The update server answered with an error.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Aktualisierungsserver hat mit einem Fehler geantwortet.</translation>
    </message>
    <message>
        <source>Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Suchen Sie später erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The connection to the update server was lost.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Verbindung zum Aktualisierungsserver ist abgebrochen.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Überprüfen Sie Ihre Internetverbindung und suchen Sie dann erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck cannot check for updates.</source>
        <comment>Updates: title of an error</comment>
        <translation>Diese Kopie von Tunedeck kann nicht nach Aktualisierungen suchen.</translation>
    </message>
    <message>
        <source>It was built with an unusable address or key. Download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Sie wurde mit einer unbrauchbaren Adresse oder einem unbrauchbaren Schlüssel erstellt. Laden Sie eine neue Version von dort herunter, woher Sie diese haben.</translation>
    </message>
    <message>
        <source>The software updater could not be opened.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Aktualisierungsverwaltung konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Look for it among your desktop&apos;s applications.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Suchen Sie unter den Anwendungen Ihrer Arbeitsumgebung danach.</translation>
    </message>
    <message>
        <source>The list of updates is too long.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Liste der Aktualisierungen ist zu lang.</translation>
    </message>
    <message>
        <source>Tunedeck stopped reading it. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck hat das Lesen abgebrochen. Suchen Sie später erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The list of updates could not be read.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Liste der Aktualisierungen konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>A new version is available, but it cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Eine neue Version ist verfügbar, aber sie ist nicht vertrauenswürdig.</translation>
    </message>
    <message>
        <source>The server does not say how to verify it, so it was not downloaded. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Der Server teilt nicht mit, wie sie sich prüfen lässt. Deshalb wurde sie nicht heruntergeladen. Suchen Sie später erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The download is incomplete.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Download ist unvollständig.</translation>
    </message>
    <message>
        <source>It was deleted. Check your connection to the internet, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Er wurde gelöscht. Überprüfen Sie Ihre Internetverbindung und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>The download is not the expected file.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Download ist nicht die erwartete Datei.</translation>
    </message>
    <message>
        <source>It is larger than announced, so it was deleted. Try again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Er ist größer als angekündigt und wurde deshalb gelöscht. Versuchen Sie es später erneut.</translation>
    </message>
    <message>
        <source>The download cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Download ist nicht vertrauenswürdig.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. It was deleted. Try again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Er stammt nicht von den Entwicklern von Tunedeck oder wurde unterwegs verändert. Deshalb wurde er gelöscht. Versuchen Sie es später oder in einem anderen Netzwerk erneut.</translation>
    </message>
    <message>
        <source>The download could not be saved.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Download konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Make sure that your download folder has free space and that you may write to it, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Stellen Sie sicher, dass in Ihrem Download-Ordner genug Platz ist und dass Sie dort schreiben dürfen, und versuchen Sie es dann erneut.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Softwareaktualisierung</translation>
    </message>
    <message>
        <source>Progress</source>
        <comment>Updates: for accessibility, the progress bar</comment>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>What is new</source>
        <comment>Updates: for accessibility, the text on what is new in a version</comment>
        <translation>Neuerungen</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <comment>Updates: a search is under way</comment>
        <translation>Es wird nach Aktualisierungen gesucht …</translation>
    </message>
    <message>
        <source>Tunedeck is up to date.</source>
        <comment>Updates: there is no newer version</comment>
        <translation>Tunedeck ist auf dem neuesten Stand.</translation>
    </message>
    <message>
        <source>You have version %1, which is the newest.</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Sie verwenden Version %1. Das ist die neueste.</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available.</source>
        <comment>Updates: there is a newer version</comment>
        <translation>Eine neue Version von Tunedeck ist verfügbar.</translation>
    </message>
    <message>
        <source>Version %1 is available; you have version %2.</source>
        <comment>Updates: %1 and %2 are versions</comment>
        <translation>Version %1 ist verfügbar; Sie verwenden Version %2.</translation>
    </message>
    <message>
        <source>&amp;Download</source>
        <comment>Updates: button that downloads the new version</comment>
        <translation>&amp;Herunterladen</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <comment>Updates: button that leaves the new version for another day</comment>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>Downloading Tunedeck %1…</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Tunedeck %1 wird heruntergeladen …</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>Updates: how much has come of a download, such as 1.2 MB of 3 MB</comment>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Checking that the download is genuine…</source>
        <comment>Updates: the file&apos;s signature is looked at</comment>
        <translation>Die Echtheit des Downloads wird geprüft …</translation>
    </message>
    <message>
        <source>The new version has been downloaded.</source>
        <comment>Updates: the file is there</comment>
        <translation>Die neue Version wurde heruntergeladen.</translation>
    </message>
    <message>
        <source>It was verified and saved as “%1” in “%2”. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>Sie wurde geprüft und als „%1“ in „%2“ gespeichert. Um sie zu installieren, beenden Sie Tunedeck und öffnen Sie die Datei.</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <comment>Updates: button that shows the file in the file manager</comment>
        <translation>Im &amp;Ordner anzeigen</translation>
    </message>
    <message>
        <source>&amp;Open Software Updater</source>
        <comment>Updates: button that starts the system&apos;s own program for updates</comment>
        <translation>&amp;Aktualisierungsverwaltung öffnen</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available, but not for your system.</source>
        <comment>Updates: there is a newer version, which needs a newer system</comment>
        <translation>Es gibt eine neue Version von Tunedeck, aber nicht für Ihr System.</translation>
    </message>
    <message>
        <source>Version %1 needs version %2 of your system or a later one. You have version %3, the newest that runs on your system.</source>
        <comment>Updates: %1 and %3 are versions of Tunedeck, %2 is one of the operating system</comment>
        <translation>Version %1 braucht Version %2 Ihres Systems oder eine spätere. Sie haben Version %3, die neueste, die auf Ihrem System läuft.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Diese Kopie von Tunedeck sucht nicht selbst nach neuen Versionen.</translation>
    </message>
    <message>
        <source>If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Kam sie mit Ihrem System, kommen neue Versionen mit dessen Aktualisierungen. Haben Sie sie selbst erstellt, erstellen Sie sie neu aus neueren Quellen.</translation>
    </message>
    <message>
        <source>The list of updates is not signed.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Liste der Aktualisierungen ist nicht signiert.</translation>
    </message>
    <message>
        <source>Tunedeck trusts only a list that its makers have signed. Check for updates again later, or download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck vertraut nur einer Liste, die seine Entwickler signiert haben. Suchen Sie später erneut nach Aktualisierungen, oder laden Sie eine neue Version von dort herunter, woher Sie diese haben.</translation>
    </message>
    <message>
        <source>The list of updates cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Liste der Aktualisierungen ist nicht zu trauen.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Sie stammt nicht von den Entwicklern von Tunedeck, oder sie wurde unterwegs verändert. Suchen Sie später oder in einem anderen Netzwerk erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The list of updates is older than one seen before.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Liste der Aktualisierungen ist älter als eine frühere.</translation>
    </message>
    <message>
        <source>Tunedeck does not go back to an older list, which may hide new versions. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck kehrt nicht zu einer älteren Liste zurück, denn sie könnte neue Versionen verschweigen. Suchen Sie später oder in einem anderen Netzwerk erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The list of updates has expired.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Liste der Aktualisierungen ist abgelaufen.</translation>
    </message>
    <message>
        <source>This computer&apos;s date is %1. If that is wrong, set the date. If it is right, check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error; %1 is a date</comment>
        <translation>Das Datum dieses Rechners ist %1. Stellen Sie es richtig, wenn es falsch ist. Wenn es stimmt, suchen Sie später oder in einem anderen Netzwerk erneut nach Aktualisierungen.</translation>
    </message>
    <message>
        <source>The file is not the one that was downloaded.</source>
        <comment>Updates: title of an error</comment>
        <translation>Das ist nicht die heruntergeladene Datei.</translation>
    </message>
    <message>
        <source>It was changed, moved or deleted. Do not open it. Check for updates again to download a new one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Sie wurde verändert, verschoben oder gelöscht. Öffnen Sie sie nicht. Suchen Sie erneut nach Aktualisierungen, um eine neue herunterzuladen.</translation>
    </message>
    <message>
        <source>The file is genuine.</source>
        <comment>Updates: the file was verified again</comment>
        <translation>Die Datei ist echt.</translation>
    </message>
    <message>
        <source>“%1” in “%2” is the file that Tunedeck&apos;s makers signed. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>„%1“ in „%2“ ist die Datei, die die Entwickler von Tunedeck signiert haben. Um sie zu installieren, beenden Sie Tunedeck und öffnen Sie die Datei.</translation>
    </message>
    <message>
        <source>&amp;Verify Again</source>
        <comment>Updates: button that checks once more that the saved file is genuine</comment>
        <translation>Erneut &amp;prüfen</translation>
    </message>
    <message>
        <source>The signature of the list of updates could not be fetched.</source>
        <comment>Updates: title of an error</comment>
        <translation>Die Signatur der Liste der Aktualisierungen konnte nicht geholt werden.</translation>
    </message>
    <message>
        <source>The update server does not have the file.</source>
        <comment>Updates: title of an error</comment>
        <translation>Der Aktualisierungsserver hat die Datei nicht.</translation>
    </message>
</context>
<context>
    <name>tunedeck::ViewController</name>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Wiedergabe</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>For UI labels: Stop</comment>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Pause</source>
        <comment>For UI labels: Pause</comment>
        <translation>Pause</translation>
    </message>
</context>
</TS>
