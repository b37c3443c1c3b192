<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="pl" sourcelanguage="en">
<context>
    <name>DesktopAction</name>
    <message>
        <source>Show or hide the window</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Pokaż lub ukryj okno</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Odtwórz lub wstrzymaj</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Zatrzymaj</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Następny utwór</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Poprzedni utwór</translation>
    </message>
    <message>
        <source>Five seconds forward</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Pięć sekund do przodu</translation>
    </message>
    <message>
        <source>Five seconds back</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Pięć sekund do tyłu</translation>
    </message>
    <message>
        <source>Volume up</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Głośniej</translation>
    </message>
    <message>
        <source>Volume down</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Ciszej</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Pokaż lub ukryj listy odtwarzania</translation>
    </message>
    <message>
        <source>Show the player</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Pokaż odtwarzacz</translation>
    </message>
    <message>
        <source>Keep above all other windows</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Zawsze na wierzchu</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>A small window that controls the running music player</source>
        <comment>For --help</comment>
        <translation>Małe okno, które steruje działającym odtwarzaczem muzyki</translation>
    </message>
    <message>
        <source>Carries out &lt;name&gt; in the running Tunedeck, or starts Tunedeck for it. &lt;name&gt; is one of: %1.</source>
        <comment>For --help; &lt;name&gt; stays as it is, %1 is a list of names</comment>
        <translation>Wykonuje &lt;name&gt; w działającym programie Tunedeck albo uruchamia go w tym celu. &lt;name&gt; to jedna z akcji: %1.</translation>
    </message>
    <message>
        <source>unknown action; see --help</source>
        <comment>On the command line</comment>
        <translation>nieznana akcja; zobacz --help</translation>
    </message>
    <message>
        <source>already running, but not responding</source>
        <comment>On the command line</comment>
        <translation>już działa, ale nie odpowiada</translation>
    </message>
    <message>
        <source>there is no session bus, so no music player can be reached</source>
        <comment>On the command line</comment>
        <translation>nie ma magistrali sesji, więc nie można połączyć się z żadnym odtwarzaczem muzyki</translation>
    </message>
    <message>
        <source>For sessions that start Tunedeck: opens the window without the keyboard focus, and only while a player is there if the preferences say so.</source>
        <comment>For --help</comment>
        <translation>Dla sesji, które uruchamiają Tunedeck: otwiera okno bez fokusu klawiatury, a jeśli tak wybrano w preferencjach, tylko gdy jest odtwarzacz.</translation>
    </message>
</context>
<context>
    <name>tunedeck</name>
    <message>
        <source>Music is not open</source>
        <comment>&apos;Music is not open&apos; displayed in LCD</comment>
        <extracomment>Also the tooltip of the empty playlist picker.</extracomment>
        <translation>Odtwarzacz zamknięty</translation>
    </message>
    <message>
        <source>No Song</source>
        <comment>&apos;No Song&apos; displayed in LCD</comment>
        <translation>Brak utworu</translation>
    </message>
    <message>
        <source>%1 cannot seek in this track</source>
        <comment>Tooltip of a disabled control</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 nie może przewijać tego utworu</translation>
    </message>
    <message>
        <source>%1 has no volume control</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 nie ma regulacji głośności</translation>
    </message>
    <message>
        <source>%1 has no shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 nie ma trybu losowego</translation>
    </message>
    <message>
        <source>%1 has no repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 nie ma trybu powtarzania</translation>
    </message>
    <message>
        <source>%1 keeps its own volume</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 zachowuje własną głośność</translation>
    </message>
    <message>
        <source>%1 keeps its own shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 zachowuje własny tryb losowy</translation>
    </message>
    <message>
        <source>%1 keeps its own repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 zachowuje własny tryb powtarzania</translation>
    </message>
    <message>
        <source>%1 is not responding</source>
        <comment>In the LCD while the player hangs</comment>
        <extracomment>%1 is the player. Also the tooltip of the controls that are then disabled.</extracomment>
        <translation>%1 nie odpowiada</translation>
    </message>
    <message>
        <source>Music</source>
        <comment>In place of the name of a player that has none: the music player</comment>
        <translation>Odtwarzacz</translation>
    </message>
    <message>
        <source>Automatic (%1)</source>
        <comment>In the list of players to follow: the one that plays, which is %1 now</comment>
        <translation>Automatycznie (%1)</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>In the list of players to follow: the one that plays</comment>
        <translation>Automatycznie</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>In the list of players to follow: the player, and the track that it plays</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (not open)</source>
        <comment>In the list of players to follow: a chosen player that does not run</comment>
        <translation>%1 (zamknięty)</translation>
    </message>
    <message>
        <source>Follow</source>
        <comment>Menu title: which player to follow</comment>
        <translation>Sterowany odtwarzacz</translation>
    </message>
    <message>
        <source>Never Follow %1</source>
        <comment>Menu command: leave the player %1 out for good</comment>
        <translation>Nigdy nie steruj: %1</translation>
    </message>
    <message>
        <source>Waiting for %1</source>
        <comment>Tooltip of the LCD: %1 is the player to follow</comment>
        <translation>Oczekiwanie na: %1</translation>
    </message>
    <message>
        <source>Show Player</source>
        <comment>Menu command that is disabled</comment>
        <translation>Pokaż odtwarzacz</translation>
    </message>
    <message>
        <source>Show %1</source>
        <comment>Menu command: show the player&apos;s own window</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>Pokaż %1</translation>
    </message>
    <message>
        <source>%1 cannot show its window</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>%1 nie może pokazać swojego okna</translation>
    </message>
    <message>
        <source>Live audio has no other tracks</source>
        <comment>Tooltip of what goes to the next and previous track, while it is disabled</comment>
        <translation>Dźwięk na żywo nie ma innych utworów</translation>
    </message>
    <message>
        <source>%1 plays no sound yet</source>
        <comment>In the menu Play Through</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 jeszcze nie odtwarza dźwięku</translation>
    </message>
    <message>
        <source>%1 plays on another device</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 odtwarza na innym urządzeniu</translation>
    </message>
    <message>
        <source>There is no sound server</source>
        <comment>In the menu Play Through</comment>
        <translation>Brak serwera dźwięku</translation>
    </message>
    <message>
        <source>The sound server is not responding</source>
        <comment>In the menu Play Through</comment>
        <translation>Serwer dźwięku nie odpowiada</translation>
    </message>
    <message>
        <source>The sound of %1 cannot be told from that of others</source>
        <comment>In the menu Play Through</comment>
        <translation>Nie można odróżnić dźwięku programu %1 od innych</translation>
    </message>
    <message>
        <source>Default</source>
        <comment>In the menu Play Through: the output that the desktop is set to</comment>
        <translation>Domyślne</translation>
    </message>
    <message>
        <source>%1 chooses its output itself</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 samodzielnie wybiera wyjście</translation>
    </message>
    <message>
        <source>Play Through</source>
        <comment>Title of a menu: the loudspeakers or headphones that the player plays to</comment>
        <translation>Odtwarzaj przez</translation>
    </message>
    <message>
        <source>The sandbox that Tunedeck runs in lets it start no other programs. Start your player yourself.</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>Piaskownica, w której działa Tunedeck, nie pozwala mu uruchamiać innych programów. Uruchom odtwarzacz samodzielnie.</translation>
    </message>
    <message>
        <source>The sandbox keeps the sound server from Tunedeck</source>
        <comment>In the menu Play Through</comment>
        <translation>Piaskownica oddziela Tunedeck od serwera dźwięku</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot;</source>
        <comment>Command to open main Music app</comment>
        <translation>Otwórz odtwarzacz muzyki</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot; (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Otwórz odtwarzacz muzyki (niemożliwe w piaskownicy)</translation>
    </message>
</context>
<context>
    <name>tunedeck::AboutWindow</name>
    <message>
        <source>About</source>
        <comment>About window title</comment>
        <translation>O programie</translation>
    </message>
    <message>
        <source>Version %1 (%2)</source>
        <comment>About window: the version and the number of its build</comment>
        <translation>Wersja %1 (%2)</translation>
    </message>
    <message>
        <source>Credits</source>
        <comment>For accessibility: the about window&apos;s text</comment>
        <translation>Autorzy i licencje</translation>
    </message>
</context>
<context>
    <name>tunedeck::AppPreferencesWindowController</name>
    <message>
        <source>General</source>
        <comment>Title for General tab</comment>
        <translation>Ogólne</translation>
    </message>
    <message>
        <source>Interface</source>
        <comment>Title for Interface tab</comment>
        <translation>Interfejs</translation>
    </message>
    <message>
        <source>Updates</source>
        <comment>Title for Updates tab</comment>
        <translation>Aktualizacje</translation>
    </message>
    <message>
        <source>Panes</source>
        <comment>For accessibility: the toolbar of the preferences window</comment>
        <translation>Panele</translation>
    </message>
    <message>
        <source>Preferences</source>
        <comment>Window Title for Preferences</comment>
        <translation>Preferencje</translation>
    </message>
</context>
<context>
    <name>tunedeck::ApplicationInstance</name>
    <message>
        <source>Tunedeck is busy</source>
        <comment>On the command line: why an action is refused</comment>
        <translation>Tunedeck jest zajęty</translation>
    </message>
</context>
<context>
    <name>tunedeck::ControlAvailability</name>
    <message>
        <source>Play or stop playing live audio</source>
        <comment>For UI labels: Play or stop playing live audio</comment>
        <translation>Odtwórz lub zatrzymaj transmisję na żywo</translation>
    </message>
    <message>
        <source>Play or pause the current track</source>
        <comment>For UI labels: Play or pause the current track</comment>
        <translation>Odtwórz lub wstrzymaj bieżący utwór</translation>
    </message>
    <message>
        <source>Muted – turn the volume up to hear it</source>
        <comment>Tooltip of the quiet speaker</comment>
        <translation>Wyciszone – podgłośnij, aby usłyszeć</translation>
    </message>
    <message>
        <source>Volume, set on the sound server</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Głośność, ustawiana na serwerze dźwięku</translation>
    </message>
    <message>
        <source>Volume, set in %1</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Głośność, ustawiana w programie %1</translation>
    </message>
</context>
<context>
    <name>tunedeck::DesktopIntegration</name>
    <message>
        <source>Waiting for the desktop…</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Oczekiwanie na pulpit…</translation>
    </message>
    <message>
        <source>The keys are in the desktop&apos;s keyboard settings.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Klawisze są w ustawieniach klawiatury pulpitu.</translation>
    </message>
    <message>
        <source>The desktop refuses.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Pulpit tego odmawia.</translation>
    </message>
    <message>
        <source>This desktop offers none. Its keyboard settings can run “tunedeck --action next” instead.</source>
        <comment>Below a check box in the preferences: keyboard shortcuts for every window</comment>
        <translation>Ten pulpit ich nie oferuje. Jego ustawienia klawiatury mogą zamiast tego uruchamiać „tunedeck --action next”.</translation>
    </message>
    <message>
        <source>You have changed the entry in the autostart folder, so it stays as it is.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>Wpis w folderze autostartu został przez Ciebie zmieniony, więc pozostaje bez zmian.</translation>
    </message>
    <message>
        <source>The autostart folder cannot be changed.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>Nie można zmienić folderu autostartu.</translation>
    </message>
    <message>
        <source>Tunedeck is at hand when you log in.</source>
        <comment>The desktop may show it when it asks whether to allow this</comment>
        <translation>Tunedeck jest pod ręką po zalogowaniu.</translation>
    </message>
    <message>
        <source>The desktop gives no usable answer.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Pulpit nie daje użytecznej odpowiedzi.</translation>
    </message>
</context>
<context>
    <name>tunedeck::DockMenuItems</name>
    <message>
        <source>Now Playing</source>
        <comment>For UI labels: Now Playing</comment>
        <translation>Teraz odtwarzane</translation>
    </message>
    <message>
        <source>Track</source>
        <comment>For UI labels: Track</comment>
        <translation>Utwór</translation>
    </message>
    <message>
        <source>Artist</source>
        <comment>For UI labels: Artist</comment>
        <translation>Wykonawca</translation>
    </message>
    <message>
        <source>Album</source>
        <comment>For UI labels: Album</comment>
        <translation>Album</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Następny utwór</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Poprzedni utwór</translation>
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
        <translation>Pomoc programu Tunedeck</translation>
    </message>
    <message>
        <source>Page</source>
        <comment>For accessibility: the text of the help page</comment>
        <translation>Strona</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>Button of the help window: to the page shown before</comment>
        <translation>Wstecz</translation>
    </message>
    <message>
        <source>Forward</source>
        <comment>Button of the help window: undoes Back</comment>
        <translation>Dalej</translation>
    </message>
    <message>
        <source>Search the help</source>
        <comment>For accessibility: the help window&apos;s search field</comment>
        <translation>Przeszukaj pomoc</translation>
    </message>
    <message>
        <source>Search</source>
        <comment>In the help window&apos;s empty search field</comment>
        <translation>Szukaj</translation>
    </message>
    <message>
        <source>Search results</source>
        <comment>For accessibility: what the help&apos;s search found</comment>
        <translation>Wyniki wyszukiwania</translation>
    </message>
    <message>
        <source>Contents</source>
        <comment>For accessibility: the list of the help&apos;s pages</comment>
        <translation>Spis treści</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <comment>In place of what the help&apos;s search found</comment>
        <translation>Nic nie znaleziono</translation>
    </message>
</context>
<context>
    <name>tunedeck::InterfacePreferencesViewController</name>
    <message>
        <source>&amp;Classic appearance</source>
        <comment>Check box in the Interface pane</comment>
        <translation>&amp;Klasyczny wygląd</translation>
    </message>
    <message>
        <source>The window stays light, even on a dark desktop.</source>
        <comment>Below the check box &quot;Classic appearance&quot;</comment>
        <translation>Okno pozostaje jasne także na ciemnym pulpicie.</translation>
    </message>
    <message>
        <source>&amp;Dark icon on a dark desktop</source>
        <comment>Check box in the Interface pane: the program&apos;s icon in the dock</comment>
        <translation>&amp;Ciemna ikona na ciemnym pulpicie</translation>
    </message>
    <message>
        <source>The icon in the dock is light or dark, like the desktop.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;</comment>
        <translation>Ikona w doku jest jasna lub ciemna, tak jak pulpit.</translation>
    </message>
    <message>
        <source>This desktop always shows the same icon.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;, where it has no effect</comment>
        <translation>Ten pulpit zawsze pokazuje tę samą ikonę.</translation>
    </message>
    <message>
        <source>&amp;Hide the volume buttons</source>
        <comment>Check box in the Interface pane</comment>
        <translation>&amp;Ukryj przyciski głośności</translation>
    </message>
    <message>
        <source>These are the two speakers beside the volume slider.</source>
        <comment>Below the check box &quot;Hide the volume buttons&quot;</comment>
        <translation>Są to dwa głośniki obok suwaka głośności.</translation>
    </message>
</context>
<context>
    <name>tunedeck::KeepAbove</name>
    <message>
        <source>Keep Above All Other Windows (Floating, on Every Workspace)</source>
        <comment>Menu command; on Sway</comment>
        <translation>Zawsze na wierzchu (pływające, w każdym obszarze roboczym)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Pinned)</source>
        <comment>Menu command; pinned: Hyprland&apos;s word</comment>
        <translation>Zawsze na wierzchu (przypięte)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Restarts Tunedeck)</source>
        <comment>Menu command</comment>
        <translation>Zawsze na wierzchu (uruchamia Tunedeck ponownie)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (The Desktop Refuses)</source>
        <comment>Menu command that had no effect</comment>
        <translation>Zawsze na wierzchu (środowisko odmawia)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible on Wayland)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Zawsze na wierzchu (niemożliwe w Waylandzie)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows</source>
        <comment>For Menu Command labels: Keep Above All Other Windows</comment>
        <translation>Zawsze na wierzchu</translation>
    </message>
    <message>
        <source>KWin does this for Tunedeck.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>KWin robi to dla programu Tunedeck.</translation>
    </message>
    <message>
        <source>Sway keeps it above tiled windows, but not above others that float.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Sway utrzymuje je nad oknami kafelkowymi, ale nie nad innymi pływającymi.</translation>
    </message>
    <message>
        <source>Hyprland floats and pins it on every workspace.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Hyprland ustawia je jako pływające i przypina w każdym obszarze roboczym.</translation>
    </message>
    <message>
        <source>Tunedeck restarts through XWayland, where it can do this. It may look less sharp.</source>
        <comment>Tooltip of the menu command to keep the window above; less sharp: on a scaled screen</comment>
        <translation>Tunedeck uruchamia się ponownie przez XWayland, gdzie może to zrobić. Może wyglądać mniej ostro.</translation>
    </message>
    <message>
        <source>Use the window&apos;s menu instead: Alt+Space in GNOME, Alt+F3 in KDE Plasma.</source>
        <comment>Tooltip of the menu command to keep the window above all others</comment>
        <translation>Zamiast tego użyj menu okna: Alt+spacja w GNOME, Alt+F3 w KDE Plasma.</translation>
    </message>
    <message>
        <source>Tunedeck would have to restart through XWayland; choose the command in its Window menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>Tunedeck musiałby uruchomić się ponownie przez XWayland; wybierz polecenie w jego menu Okno</translation>
    </message>
    <message>
        <source>On Wayland only the desktop can keep a window above all others; see the window&apos;s menu</source>
        <comment>On the command line: why the action is refused</comment>
        <translation>W Waylandzie tylko pulpit może utrzymać okno nad innymi; zobacz menu okna</translation>
    </message>
    <message>
        <source>The desktop refuses; see the window&apos;s menu</source>
        <comment>On the command line: the desktop has not kept the window above all others</comment>
        <translation>Pulpit tego odmawia; zobacz menu okna</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Zawsze na wierzchu (niemożliwe w piaskownicy)</translation>
    </message>
    <message>
        <source>The sandbox keeps Tunedeck from the desktop; see the window&apos;s menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>Piaskownica oddziela Tunedeck od pulpitu; zobacz menu okna</translation>
    </message>
</context>
<context>
    <name>tunedeck::LcdView</name>
    <message>
        <source>Live</source>
        <comment>In place of the times while a live stream plays</comment>
        <translation>Na żywo</translation>
    </message>
    <message>
        <source>Position</source>
        <comment>For accessibility: the progress slider</comment>
        <translation>Miejsce w utworze</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>The info button</comment>
        <translation>Pokaż lub ukryj listy odtwarzania</translation>
    </message>
</context>
<context>
    <name>tunedeck::MainMenu</name>
    <message>
        <source>File</source>
        <comment>Menu title</comment>
        <translation>Plik</translation>
    </message>
    <message>
        <source>Controls</source>
        <comment>Menu title</comment>
        <translation>Sterowanie</translation>
    </message>
    <message>
        <source>Window</source>
        <comment>Menu title</comment>
        <translation>Okno</translation>
    </message>
    <message>
        <source>Help</source>
        <comment>Menu title</comment>
        <translation>Pomoc</translation>
    </message>
    <message>
        <source>About Tunedeck</source>
        <comment>Menu command</comment>
        <translation>O programie Tunedeck</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <comment>Menu command</comment>
        <translation>Sprawdź aktualizacje…</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <comment>Menu command</comment>
        <translation>Preferencje…</translation>
    </message>
    <message>
        <source>Quit</source>
        <comment>Menu command</comment>
        <translation>Zakończ</translation>
    </message>
    <message>
        <source>Close Window</source>
        <comment>Menu command</comment>
        <translation>Zamknij okno</translation>
    </message>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Odtwórz</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Następny utwór</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Poprzedni utwór</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <comment>Menu command</comment>
        <translation>Zwiększ głośność</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <comment>Menu command</comment>
        <translation>Zmniejsz głośność</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Menu command</comment>
        <translation>Zminimalizuj</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Menu command</comment>
        <translation>Powiększ</translation>
    </message>
    <message>
        <source>Hide Playlists</source>
        <comment>Menu command: close the drawer</comment>
        <translation>Ukryj listy odtwarzania</translation>
    </message>
    <message>
        <source>Show Playlists</source>
        <comment>Menu command: open the drawer</comment>
        <translation>Pokaż listy odtwarzania</translation>
    </message>
    <message>
        <source>Tunedeck Help</source>
        <comment>Menu command</comment>
        <translation>Pomoc programu Tunedeck</translation>
    </message>
    <message>
        <source>Terms and Conditions</source>
        <comment>Menu command</comment>
        <translation>Warunki użytkowania</translation>
    </message>
    <message>
        <source>Run Through XWayland</source>
        <comment>Menu command that can be checked</comment>
        <translation>Uruchamiaj przez XWayland</translation>
    </message>
    <message>
        <source>Most desktops can then keep the window above others. It may look less sharp.</source>
        <comment>Tooltip of the menu command to run Tunedeck through XWayland; less sharp: on a scaled screen</comment>
        <translation>Większość środowisk może wtedy utrzymać okno nad innymi. Może wyglądać mniej ostro.</translation>
    </message>
    <message>
        <source>Follow Automatically</source>
        <comment>Menu command: stop waiting for the chosen player</comment>
        <translation>Wybieraj automatycznie</translation>
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
        <translation>P&amp;rzywróć</translation>
    </message>
    <message>
        <source>Players that are never followed</source>
        <comment>For accessibility: a list in the General pane</comment>
        <translation>Odtwarzacze, które nigdy nie są sterowane</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlayerView</name>
    <message>
        <source>Close</source>
        <comment>Window button</comment>
        <translation>Zamknij</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Window button</comment>
        <translation>Zminimalizuj</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Window button</comment>
        <translation>Powiększ</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Transport button</comment>
        <translation>Poprzedni utwór</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Transport button</comment>
        <translation>Odtwórz lub wstrzymaj</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Transport button</comment>
        <translation>Następny utwór</translation>
    </message>
    <message>
        <source>Silence</source>
        <comment>Button at the quiet end of the volume slider</comment>
        <translation>Cisza</translation>
    </message>
    <message>
        <source>Volume</source>
        <comment>Volume slider</comment>
        <translation>Głośność</translation>
    </message>
    <message>
        <source>Full volume</source>
        <comment>Button at the loud end of the volume slider</comment>
        <translation>Pełna głośność</translation>
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
        <translation>Lista odtwarzania</translation>
    </message>
    <message>
        <source>Done</source>
        <comment>Button in the drawer: play the chosen playlist</comment>
        <translation>Odtwórz</translation>
    </message>
    <message>
        <source>Play the chosen playlist</source>
        <comment>Tooltip of the done button in the drawer</comment>
        <translation>Odtwórz wybraną listę odtwarzania</translation>
    </message>
    <message>
        <source>Shuffle</source>
        <comment>Button in the drawer</comment>
        <translation>Odtwarzanie losowe</translation>
    </message>
    <message>
        <source>Repeat</source>
        <comment>Button in the drawer</comment>
        <translation>Powtarzanie</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlaylistViewController</name>
    <message>
        <source>Repeat: off</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Powtarzanie: wyłączone</translation>
    </message>
    <message>
        <source>Repeat: one</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Powtarzanie: jeden utwór</translation>
    </message>
    <message>
        <source>Repeat: all</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Powtarzanie: wszystkie utwory</translation>
    </message>
    <message>
        <source>Choose a playlist</source>
        <comment>Tooltip of the playlist picker</comment>
        <translation>Wybierz listę odtwarzania</translation>
    </message>
    <message>
        <source>The player has no playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Odtwarzacz nie ma list odtwarzania</translation>
    </message>
    <message>
        <source>There are no playlist files (.m3u, .m3u8, .pls, .xspf) in your music folder</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>W katalogu z muzyką nie ma plików list odtwarzania (.m3u, .m3u8, .pls, .xspf)</translation>
    </message>
    <message>
        <source>Waiting for the player&apos;s playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Oczekiwanie na listy odtwarzania z odtwarzacza</translation>
    </message>
    <message>
        <source>This player neither offers playlists nor opens playlist files</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Ten odtwarzacz nie udostępnia list odtwarzania ani nie otwiera ich plików</translation>
    </message>
    <message>
        <source>Shuffle: on</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Odtwarzanie losowe: włączone</translation>
    </message>
    <message>
        <source>Shuffle: off</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Odtwarzanie losowe: wyłączone</translation>
    </message>
    <message>
        <source>There are more playlists than these</source>
        <comment>After the last playlist, and the playlist picker&apos;s tooltip</comment>
        <translation>Są też inne listy odtwarzania</translation>
    </message>
</context>
<context>
    <name>tunedeck::PreferencesViewController</name>
    <message>
        <source>&amp;Remaining time</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>&amp;Pozostały czas</translation>
    </message>
    <message>
        <source>&amp;Duration</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>&amp;Czas trwania</translation>
    </message>
    <message>
        <source>&amp;Follow player:</source>
        <comment>Caption in the General pane, before the choice of the player</comment>
        <translation>&amp;Sterowany odtwarzacz:</translation>
    </message>
    <message>
        <source>Automatic follows the player that is playing.</source>
        <comment>Below the choice of the player to follow</comment>
        <translation>„Automatycznie” oznacza odtwarzacz, który właśnie gra.</translation>
    </message>
    <message>
        <source>Time on the right:</source>
        <comment>Caption in the General pane: the display&apos;s time on the right</comment>
        <translation>Czas po prawej:</translation>
    </message>
    <message>
        <source>&amp;Never follow:</source>
        <comment>Caption in the General pane, before the list of such players</comment>
        <translation>&amp;Nigdy nie steruj:</translation>
    </message>
    <message>
        <source>&amp;Turn the wheel&apos;s direction</source>
        <comment>Check box in the General pane: which way a mouse wheel turns the volume</comment>
        <translation>&amp;Odwróć kierunek kółka</translation>
    </message>
    <message>
        <source>If turning it upwards makes the music quieter.</source>
        <comment>Below the check box &quot;Turn the wheel&apos;s direction&quot;</comment>
        <translation>Jeśli obracanie go w górę ścisza muzykę.</translation>
    </message>
    <message>
        <source>Volume:</source>
        <comment>Caption in the General pane, before the choice of the wheel&apos;s direction</comment>
        <translation>Głośność:</translation>
    </message>
    <message>
        <source>&amp;Start with the session</source>
        <comment>Check box in the General pane</comment>
        <translation>&amp;Uruchamiaj wraz z sesją</translation>
    </message>
    <message>
        <source>Tunedeck is there when you log in.</source>
        <comment>Below the check box &quot;Start with the session&quot;</comment>
        <translation>Tunedeck jest gotowy po zalogowaniu.</translation>
    </message>
    <message>
        <source>Show &amp;only while a player is there</source>
        <comment>Check box in the General pane: about the window</comment>
        <translation>Pokazuj &amp;tylko, gdy jest odtwarzacz</translation>
    </message>
    <message>
        <source>The window goes with the last player and comes back with the next.</source>
        <comment>Below the check box &quot;Show only while a player is there&quot;</comment>
        <translation>Okno znika z ostatnim odtwarzaczem i wraca z następnym.</translation>
    </message>
    <message>
        <source>Shortcuts in &amp;every window</source>
        <comment>Check box in the General pane: keyboard shortcuts</comment>
        <translation>Skróty w &amp;każdym oknie</translation>
    </message>
    <message>
        <source>The desktop lets you choose the keys.</source>
        <comment>Below the check box &quot;Shortcuts in every window&quot;</comment>
        <translation>Klawisze wybiera się w ustawieniach pulpitu.</translation>
    </message>
    <message>
        <source>Window:</source>
        <comment>Caption in the General pane, before the choices of when the window is there</comment>
        <translation>Okno:</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <comment>Caption in the General pane, before the choice of shortcuts in every window</comment>
        <translation>Klawiatura:</translation>
    </message>
</context>
<context>
    <name>tunedeck::SoftwareUpdater</name>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Aktualizacja oprogramowania</translation>
    </message>
    <message>
        <source>Tunedeck&apos;s updater is missing or belongs to another version.</source>
        <comment>Updates: title of an error</comment>
        <translation>Brakuje modułu aktualizacji programu Tunedeck albo pochodzi on z innej wersji.</translation>
    </message>
    <message>
        <source>Install Tunedeck again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Zainstaluj program Tunedeck ponownie.</translation>
    </message>
</context>
<context>
    <name>tunedeck::TimeLabelMenu</name>
    <message>
        <source>Menu</source>
        <comment>Title of the time label&apos;s context menu</comment>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Remaining Time</source>
        <comment>For UI labels: Remaining Time</comment>
        <translation>Pozostały czas</translation>
    </message>
    <message>
        <source>Duration</source>
        <comment>For UI labels: Duration</comment>
        <translation>Czas trwania</translation>
    </message>
</context>
<context>
    <name>tunedeck::TrackDisplay</name>
    <message>
        <source>Elapsed Time</source>
        <comment>For UI labels: Elapsed Time</comment>
        <translation>Czas od początku</translation>
    </message>
    <message>
        <source>Playing through %1</source>
        <comment>Tooltip of the display</comment>
        <extracomment>%1 is an output or several, such as &quot;Headphones and Kitchen&quot;.</extracomment>
        <translation>Odtwarzanie przez: %1</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdatePreferencesViewController</name>
    <message>
        <source>Check for Updates…</source>
        <comment>Button in the Updates pane</comment>
        <translation>Sprawdź aktualizacje…</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>Button in the Updates pane: opens the page about updates</comment>
        <translation>&amp;Pomoc</translation>
    </message>
    <message>
        <source>Tunedeck %1</source>
        <comment>In the Updates pane; %1 is the version that runs</comment>
        <translation>Tunedeck %1</translation>
    </message>
    <message>
        <source>Tunedeck looks for a newer version only when you ask. You choose whether to download it.</source>
        <comment>In the Updates pane</comment>
        <translation>Tunedeck szuka nowszej wersji tylko na życzenie. Ty decydujesz, czy ją pobrać.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself. If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>In the Updates pane</comment>
        <translation>Ta kopia programu Tunedeck nie szuka sama nowych wersji. Jeśli pochodzi z systemu, nowe wersje są dostarczane z aktualizacjami systemu. Jeśli została zbudowana samodzielnie, należy zbudować ją ponownie z nowszych źródeł.</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdateWindow</name>
    <message>
        <source>The update server could not be reached.</source>
        <comment>Updates: title of an error</comment>
        <translation>Nie można połączyć się z serwerem aktualizacji.</translation>
    </message>
    <message>
        <source>Make sure that this computer is connected to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Upewnij się, że komputer jest połączony z Internetem, a następnie ponownie sprawdź aktualizacje.</translation>
    </message>
    <message>
        <source>The connection to the update server is not secure.</source>
        <comment>Updates: title of an error</comment>
        <translation>Połączenie z serwerem aktualizacji nie jest bezpieczne.</translation>
    </message>
    <message>
        <source>Nothing was downloaded. Make sure that this computer&apos;s date and time are right, or try again on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Niczego nie pobrano. Upewnij się, że data i godzina na komputerze są prawidłowe, lub spróbuj ponownie w innej sieci.</translation>
    </message>
    <message>
        <source>The update server redirects too often.</source>
        <comment>Updates: title of an error</comment>
        <translation>Serwer aktualizacji przekierowuje zbyt wiele razy.</translation>
    </message>
    <message>
        <source>The update server stopped responding or is too slow.</source>
        <comment>Updates: title of an error</comment>
        <translation>Serwer aktualizacji przestał odpowiadać lub jest zbyt wolny.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, or check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Sprawdź połączenie z Internetem lub ponownie sprawdź aktualizacje później.</translation>
    </message>
    <message>
        <source>The update server answered with an error.</source>
        <comment>Updates: title of an error</comment>
        <translation>Serwer aktualizacji odpowiedział błędem.</translation>
    </message>
    <message>
        <source>Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Sprawdź aktualizacje ponownie później.</translation>
    </message>
    <message>
        <source>The connection to the update server was lost.</source>
        <comment>Updates: title of an error</comment>
        <translation>Utracono połączenie z serwerem aktualizacji.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Sprawdź połączenie z Internetem, a następnie ponownie sprawdź aktualizacje.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck cannot check for updates.</source>
        <comment>Updates: title of an error</comment>
        <translation>Ta kopia programu Tunedeck nie może sprawdzać aktualizacji.</translation>
    </message>
    <message>
        <source>It was built with an unusable address or key. Download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Zbudowano ją z adresem lub kluczem, którego nie można użyć. Pobierz nową wersję z tego samego źródła, z którego pochodzi ta.</translation>
    </message>
    <message>
        <source>The software updater could not be opened.</source>
        <comment>Updates: title of an error</comment>
        <translation>Nie można otworzyć programu do aktualizacji oprogramowania.</translation>
    </message>
    <message>
        <source>Look for it among your desktop&apos;s applications.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Poszukaj go wśród programów w swoim środowisku.</translation>
    </message>
    <message>
        <source>The list of updates is too long.</source>
        <comment>Updates: title of an error</comment>
        <translation>Lista aktualizacji jest za długa.</translation>
    </message>
    <message>
        <source>Tunedeck stopped reading it. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck przerwał jej odczytywanie. Sprawdź aktualizacje ponownie później.</translation>
    </message>
    <message>
        <source>The list of updates could not be read.</source>
        <comment>Updates: title of an error</comment>
        <translation>Nie można odczytać listy aktualizacji.</translation>
    </message>
    <message>
        <source>A new version is available, but it cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Dostępna jest nowa wersja, ale nie można jej zaufać.</translation>
    </message>
    <message>
        <source>The server does not say how to verify it, so it was not downloaded. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Serwer nie podaje, jak ją zweryfikować, więc nie została pobrana. Sprawdź aktualizacje ponownie później.</translation>
    </message>
    <message>
        <source>The download is incomplete.</source>
        <comment>Updates: title of an error</comment>
        <translation>Pobrany plik jest niekompletny.</translation>
    </message>
    <message>
        <source>It was deleted. Check your connection to the internet, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Plik usunięto. Sprawdź połączenie z Internetem, a następnie spróbuj ponownie.</translation>
    </message>
    <message>
        <source>The download is not the expected file.</source>
        <comment>Updates: title of an error</comment>
        <translation>Pobrany plik nie jest tym, którego oczekiwano.</translation>
    </message>
    <message>
        <source>It is larger than announced, so it was deleted. Try again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Jest większy, niż zapowiedziano, więc go usunięto. Spróbuj ponownie później.</translation>
    </message>
    <message>
        <source>The download cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Pobranemu plikowi nie można zaufać.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. It was deleted. Try again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Nie pochodzi od twórców programu Tunedeck lub został po drodze zmieniony. Plik usunięto. Spróbuj ponownie później lub w innej sieci.</translation>
    </message>
    <message>
        <source>The download could not be saved.</source>
        <comment>Updates: title of an error</comment>
        <translation>Nie można zapisać pobranego pliku.</translation>
    </message>
    <message>
        <source>Make sure that your download folder has free space and that you may write to it, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Upewnij się, że w katalogu pobranych plików jest miejsce i że masz prawo w nim zapisywać, a następnie spróbuj ponownie.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Aktualizacja oprogramowania</translation>
    </message>
    <message>
        <source>Progress</source>
        <comment>Updates: for accessibility, the progress bar</comment>
        <translation>Postęp</translation>
    </message>
    <message>
        <source>What is new</source>
        <comment>Updates: for accessibility, the text on what is new in a version</comment>
        <translation>Co nowego</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <comment>Updates: a search is under way</comment>
        <translation>Sprawdzanie aktualizacji…</translation>
    </message>
    <message>
        <source>Tunedeck is up to date.</source>
        <comment>Updates: there is no newer version</comment>
        <translation>Tunedeck jest aktualny.</translation>
    </message>
    <message>
        <source>You have version %1, which is the newest.</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Masz wersję %1, która jest najnowsza.</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available.</source>
        <comment>Updates: there is a newer version</comment>
        <translation>Dostępna jest nowa wersja programu Tunedeck.</translation>
    </message>
    <message>
        <source>Version %1 is available; you have version %2.</source>
        <comment>Updates: %1 and %2 are versions</comment>
        <translation>Dostępna jest wersja %1; masz wersję %2.</translation>
    </message>
    <message>
        <source>&amp;Download</source>
        <comment>Updates: button that downloads the new version</comment>
        <translation>&amp;Pobierz</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <comment>Updates: button that leaves the new version for another day</comment>
        <translation>Późni&amp;ej</translation>
    </message>
    <message>
        <source>Downloading Tunedeck %1…</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Pobieranie programu Tunedeck %1…</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>Updates: how much has come of a download, such as 1.2 MB of 3 MB</comment>
        <translation>%1 z %2</translation>
    </message>
    <message>
        <source>Checking that the download is genuine…</source>
        <comment>Updates: the file&apos;s signature is looked at</comment>
        <translation>Sprawdzanie autentyczności pobranego pliku…</translation>
    </message>
    <message>
        <source>The new version has been downloaded.</source>
        <comment>Updates: the file is there</comment>
        <translation>Nowa wersja została pobrana.</translation>
    </message>
    <message>
        <source>It was verified and saved as “%1” in “%2”. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>Zweryfikowano ją i zapisano jako „%1” w katalogu „%2”. Aby ją zainstalować, zakończ program Tunedeck i otwórz ten plik.</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <comment>Updates: button that shows the file in the file manager</comment>
        <translation>Pokaż w &amp;katalogu</translation>
    </message>
    <message>
        <source>&amp;Open Software Updater</source>
        <comment>Updates: button that starts the system&apos;s own program for updates</comment>
        <translation>&amp;Otwórz program do aktualizacji</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available, but not for your system.</source>
        <comment>Updates: there is a newer version, which needs a newer system</comment>
        <translation>Jest nowa wersja programu Tunedeck, ale nie dla tego systemu.</translation>
    </message>
    <message>
        <source>Version %1 needs version %2 of your system or a later one. You have version %3, the newest that runs on your system.</source>
        <comment>Updates: %1 and %3 are versions of Tunedeck, %2 is one of the operating system</comment>
        <translation>Wersja %1 wymaga wersji %2 systemu lub nowszej. Masz wersję %3, najnowszą, która działa w tym systemie.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Ta kopia programu Tunedeck nie szuka sama nowych wersji.</translation>
    </message>
    <message>
        <source>If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Jeśli pochodzi z systemu, nowe wersje są dostarczane z aktualizacjami systemu. Jeśli została zbudowana samodzielnie, należy zbudować ją ponownie z nowszych źródeł.</translation>
    </message>
    <message>
        <source>The list of updates is not signed.</source>
        <comment>Updates: title of an error</comment>
        <translation>Lista aktualizacji nie jest podpisana.</translation>
    </message>
    <message>
        <source>Tunedeck trusts only a list that its makers have signed. Check for updates again later, or download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck ufa tylko liście podpisanej przez jego twórców. Sprawdź aktualizacje później lub pobierz nową wersję stamtąd, skąd masz tę.</translation>
    </message>
    <message>
        <source>The list of updates cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Liście aktualizacji nie można ufać.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Nie pochodzi od twórców Tunedecka albo została po drodze zmieniona. Sprawdź aktualizacje później lub w innej sieci.</translation>
    </message>
    <message>
        <source>The list of updates is older than one seen before.</source>
        <comment>Updates: title of an error</comment>
        <translation>Lista aktualizacji jest starsza niż widziana wcześniej.</translation>
    </message>
    <message>
        <source>Tunedeck does not go back to an older list, which may hide new versions. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck nie wraca do starszej listy, która może ukrywać nowe wersje. Sprawdź aktualizacje później lub w innej sieci.</translation>
    </message>
    <message>
        <source>The list of updates has expired.</source>
        <comment>Updates: title of an error</comment>
        <translation>Lista aktualizacji straciła ważność.</translation>
    </message>
    <message>
        <source>This computer&apos;s date is %1. If that is wrong, set the date. If it is right, check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error; %1 is a date</comment>
        <translation>Data na tym komputerze to %1. Jeśli jest błędna, ustaw ją. Jeśli jest poprawna, sprawdź aktualizacje później lub w innej sieci.</translation>
    </message>
    <message>
        <source>The file is not the one that was downloaded.</source>
        <comment>Updates: title of an error</comment>
        <translation>To nie jest pobrany plik.</translation>
    </message>
    <message>
        <source>It was changed, moved or deleted. Do not open it. Check for updates again to download a new one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Został zmieniony, przeniesiony lub usunięty. Nie otwieraj go. Sprawdź aktualizacje ponownie, aby pobrać nowy.</translation>
    </message>
    <message>
        <source>The file is genuine.</source>
        <comment>Updates: the file was verified again</comment>
        <translation>Plik jest autentyczny.</translation>
    </message>
    <message>
        <source>“%1” in “%2” is the file that Tunedeck&apos;s makers signed. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>„%1” w katalogu „%2” to plik podpisany przez twórców programu Tunedeck. Aby go zainstalować, zakończ program Tunedeck i otwórz plik.</translation>
    </message>
    <message>
        <source>&amp;Verify Again</source>
        <comment>Updates: button that checks once more that the saved file is genuine</comment>
        <translation>&amp;Zweryfikuj ponownie</translation>
    </message>
    <message>
        <source>The signature of the list of updates could not be fetched.</source>
        <comment>Updates: title of an error</comment>
        <translation>Nie udało się pobrać podpisu listy aktualizacji.</translation>
    </message>
    <message>
        <source>The update server does not have the file.</source>
        <comment>Updates: title of an error</comment>
        <translation>Serwer aktualizacji nie ma tego pliku.</translation>
    </message>
</context>
<context>
    <name>tunedeck::ViewController</name>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Odtwórz</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>For UI labels: Stop</comment>
        <translation>Zatrzymaj</translation>
    </message>
    <message>
        <source>Pause</source>
        <comment>For UI labels: Pause</comment>
        <translation>Wstrzymaj</translation>
    </message>
</context>
</TS>
