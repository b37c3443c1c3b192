<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fi" sourcelanguage="en">
<context>
    <name>DesktopAction</name>
    <message>
        <source>Show or hide the window</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Näytä tai piilota ikkuna</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Toista tai keskeytä</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Pysäytä</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Seuraava</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Edellinen</translation>
    </message>
    <message>
        <source>Five seconds forward</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Viisi sekuntia eteenpäin</translation>
    </message>
    <message>
        <source>Five seconds back</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Viisi sekuntia taaksepäin</translation>
    </message>
    <message>
        <source>Volume up</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Lisää äänenvoimakkuutta</translation>
    </message>
    <message>
        <source>Volume down</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Vähennä äänenvoimakkuutta</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Näytä tai piilota soittolistat</translation>
    </message>
    <message>
        <source>Show the player</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Näytä soitin</translation>
    </message>
    <message>
        <source>Keep above all other windows</source>
        <comment>Keyboard shortcut in the desktop&apos;s settings</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>A small window that controls the running music player</source>
        <comment>For --help</comment>
        <translation>Pieni ikkuna, joka ohjaa käynnissä olevaa musiikkisoitinta</translation>
    </message>
    <message>
        <source>Carries out &lt;name&gt; in the running Tunedeck, or starts Tunedeck for it. &lt;name&gt; is one of: %1.</source>
        <comment>For --help; &lt;name&gt; stays as it is, %1 is a list of names</comment>
        <translation>Suorittaa toiminnon &lt;name&gt; käynnissä olevassa Tunedeckissä tai käynnistää sen tätä varten. &lt;name&gt; on jokin näistä: %1.</translation>
    </message>
    <message>
        <source>unknown action; see --help</source>
        <comment>On the command line</comment>
        <translation>tuntematon toiminto; katso --help</translation>
    </message>
    <message>
        <source>already running, but not responding</source>
        <comment>On the command line</comment>
        <translation>on jo käynnissä, mutta ei vastaa</translation>
    </message>
    <message>
        <source>there is no session bus, so no music player can be reached</source>
        <comment>On the command line</comment>
        <translation>istuntoväylää ei ole, joten yhteenkään musiikkisoittimeen ei saada yhteyttä</translation>
    </message>
    <message>
        <source>For sessions that start Tunedeck: opens the window without the keyboard focus, and only while a player is there if the preferences say so.</source>
        <comment>For --help</comment>
        <translation>Istunnoille, jotka käynnistävät Tunedeckin: avaa ikkunan ilman näppäimistökohdistusta ja, jos niin on asetettu, vain kun soitin on käynnissä.</translation>
    </message>
</context>
<context>
    <name>tunedeck</name>
    <message>
        <source>Music is not open</source>
        <comment>&apos;Music is not open&apos; displayed in LCD</comment>
        <extracomment>Also the tooltip of the empty playlist picker.</extracomment>
        <translation>Soitin ei ole auki</translation>
    </message>
    <message>
        <source>No Song</source>
        <comment>&apos;No Song&apos; displayed in LCD</comment>
        <translation>Ei kappaletta</translation>
    </message>
    <message>
        <source>%1 cannot seek in this track</source>
        <comment>Tooltip of a disabled control</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 ei voi siirtyä tässä kappaleessa</translation>
    </message>
    <message>
        <source>%1 has no volume control</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 ei tarjoa äänenvoimakkuuden säätöä</translation>
    </message>
    <message>
        <source>%1 has no shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 ei tarjoa satunnaistoistoa</translation>
    </message>
    <message>
        <source>%1 has no repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 ei tarjoa kertausta</translation>
    </message>
    <message>
        <source>%1 keeps its own volume</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 pitää oman äänenvoimakkuutensa</translation>
    </message>
    <message>
        <source>%1 keeps its own shuffle mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 pitää oman satunnaistoistonsa</translation>
    </message>
    <message>
        <source>%1 keeps its own repeat mode</source>
        <comment>Tooltip of a disabled control</comment>
        <translation>%1 pitää oman kertauksensa</translation>
    </message>
    <message>
        <source>%1 is not responding</source>
        <comment>In the LCD while the player hangs</comment>
        <extracomment>%1 is the player. Also the tooltip of the controls that are then disabled.</extracomment>
        <translation>%1 ei vastaa</translation>
    </message>
    <message>
        <source>Music</source>
        <comment>In place of the name of a player that has none: the music player</comment>
        <translation>Soitin</translation>
    </message>
    <message>
        <source>Automatic (%1)</source>
        <comment>In the list of players to follow: the one that plays, which is %1 now</comment>
        <translation>Automaattinen (%1)</translation>
    </message>
    <message>
        <source>Automatic</source>
        <comment>In the list of players to follow: the one that plays</comment>
        <translation>Automaattinen</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>In the list of players to follow: the player, and the track that it plays</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (not open)</source>
        <comment>In the list of players to follow: a chosen player that does not run</comment>
        <translation>%1 (ei auki)</translation>
    </message>
    <message>
        <source>Follow</source>
        <comment>Menu title: which player to follow</comment>
        <translation>Seuraa</translation>
    </message>
    <message>
        <source>Never Follow %1</source>
        <comment>Menu command: leave the player %1 out for good</comment>
        <translation>Älä koskaan seuraa: %1</translation>
    </message>
    <message>
        <source>Waiting for %1</source>
        <comment>Tooltip of the LCD: %1 is the player to follow</comment>
        <translation>Odotetaan: %1</translation>
    </message>
    <message>
        <source>Show Player</source>
        <comment>Menu command that is disabled</comment>
        <translation>Näytä soitin</translation>
    </message>
    <message>
        <source>Show %1</source>
        <comment>Menu command: show the player&apos;s own window</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>Näytä %1</translation>
    </message>
    <message>
        <source>%1 cannot show its window</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>%1 ei voi näyttää ikkunaansa</translation>
    </message>
    <message>
        <source>Live audio has no other tracks</source>
        <comment>Tooltip of what goes to the next and previous track, while it is disabled</comment>
        <translation>Suorassa lähetyksessä ei ole muita kappaleita</translation>
    </message>
    <message>
        <source>%1 plays no sound yet</source>
        <comment>In the menu Play Through</comment>
        <extracomment>%1 is the player.</extracomment>
        <translation>%1 ei vielä toista ääntä</translation>
    </message>
    <message>
        <source>%1 plays on another device</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 toistaa toisella laitteella</translation>
    </message>
    <message>
        <source>There is no sound server</source>
        <comment>In the menu Play Through</comment>
        <translation>Äänipalvelinta ei ole</translation>
    </message>
    <message>
        <source>The sound server is not responding</source>
        <comment>In the menu Play Through</comment>
        <translation>Äänipalvelin ei vastaa</translation>
    </message>
    <message>
        <source>The sound of %1 cannot be told from that of others</source>
        <comment>In the menu Play Through</comment>
        <translation>Ääntä, jota %1 toistaa, ei voi erottaa muista</translation>
    </message>
    <message>
        <source>Default</source>
        <comment>In the menu Play Through: the output that the desktop is set to</comment>
        <translation>Oletus</translation>
    </message>
    <message>
        <source>%1 chooses its output itself</source>
        <comment>In the menu Play Through</comment>
        <translation>%1 valitsee itse ulostulonsa</translation>
    </message>
    <message>
        <source>Play Through</source>
        <comment>Title of a menu: the loudspeakers or headphones that the player plays to</comment>
        <translation>Toista laitteella</translation>
    </message>
    <message>
        <source>The sandbox that Tunedeck runs in lets it start no other programs. Start your player yourself.</source>
        <comment>Tooltip of a disabled menu command</comment>
        <translation>Hiekkalaatikko, jossa Tunedeck toimii, ei anna sen käynnistää muita ohjelmia. Käynnistä soitin itse.</translation>
    </message>
    <message>
        <source>The sandbox keeps the sound server from Tunedeck</source>
        <comment>In the menu Play Through</comment>
        <translation>Hiekkalaatikko pitää äänipalvelimen erossa Tunedeckistä</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot;</source>
        <comment>Command to open main Music app</comment>
        <translation>Avaa soitin</translation>
    </message>
    <message>
        <source>Open &quot;Music&quot; (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Avaa soitin (ei mahdollista hiekkalaatikossa)</translation>
    </message>
</context>
<context>
    <name>tunedeck::AboutWindow</name>
    <message>
        <source>About</source>
        <comment>About window title</comment>
        <translation>Tietoja</translation>
    </message>
    <message>
        <source>Version %1 (%2)</source>
        <comment>About window: the version and the number of its build</comment>
        <translation>Versio %1 (%2)</translation>
    </message>
    <message>
        <source>Credits</source>
        <comment>For accessibility: the about window&apos;s text</comment>
        <translation>Tekijät</translation>
    </message>
</context>
<context>
    <name>tunedeck::AppPreferencesWindowController</name>
    <message>
        <source>General</source>
        <comment>Title for General tab</comment>
        <translation>Yleiset</translation>
    </message>
    <message>
        <source>Interface</source>
        <comment>Title for Interface tab</comment>
        <translation>Käyttöliittymä</translation>
    </message>
    <message>
        <source>Updates</source>
        <comment>Title for Updates tab</comment>
        <translation>Päivitykset</translation>
    </message>
    <message>
        <source>Panes</source>
        <comment>For accessibility: the toolbar of the preferences window</comment>
        <translation>Osiot</translation>
    </message>
    <message>
        <source>Preferences</source>
        <comment>Window Title for Preferences</comment>
        <translation>Asetukset</translation>
    </message>
</context>
<context>
    <name>tunedeck::ApplicationInstance</name>
    <message>
        <source>Tunedeck is busy</source>
        <comment>On the command line: why an action is refused</comment>
        <translation>Tunedeck on varattu</translation>
    </message>
</context>
<context>
    <name>tunedeck::ControlAvailability</name>
    <message>
        <source>Play or stop playing live audio</source>
        <comment>For UI labels: Play or stop playing live audio</comment>
        <translation>Toista suoraa lähetystä tai pysäytä se</translation>
    </message>
    <message>
        <source>Play or pause the current track</source>
        <comment>For UI labels: Play or pause the current track</comment>
        <translation>Toista nykyinen kappale tai keskeytä se</translation>
    </message>
    <message>
        <source>Muted – turn the volume up to hear it</source>
        <comment>Tooltip of the quiet speaker</comment>
        <translation>Mykistetty – kuulet sen, kun nostat äänenvoimakkuutta</translation>
    </message>
    <message>
        <source>Volume, set on the sound server</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Äänenvoimakkuus, säädetään äänipalvelimessa</translation>
    </message>
    <message>
        <source>Volume, set in %1</source>
        <comment>Tooltip of the volume slider</comment>
        <translation>Äänenvoimakkuus, säätää %1</translation>
    </message>
</context>
<context>
    <name>tunedeck::DesktopIntegration</name>
    <message>
        <source>Waiting for the desktop…</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Odotetaan työpöytää…</translation>
    </message>
    <message>
        <source>The keys are in the desktop&apos;s keyboard settings.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Näppäimet ovat työpöydän näppäimistöasetuksissa.</translation>
    </message>
    <message>
        <source>The desktop refuses.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Työpöytä ei salli sitä.</translation>
    </message>
    <message>
        <source>This desktop offers none. Its keyboard settings can run “tunedeck --action next” instead.</source>
        <comment>Below a check box in the preferences: keyboard shortcuts for every window</comment>
        <translation>Tämä työpöytä ei tarjoa niitä. Sen näppäimistöasetuksissa voi sen sijaan suorittaa komennon ”tunedeck --action next”.</translation>
    </message>
    <message>
        <source>You have changed the entry in the autostart folder, so it stays as it is.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>Olet muuttanut automaattisen käynnistyksen kansion tiedostoa, joten se jää ennalleen.</translation>
    </message>
    <message>
        <source>The autostart folder cannot be changed.</source>
        <comment>Below a check box in the preferences: start with the session</comment>
        <translation>Automaattisen käynnistyksen kansiota ei voi muuttaa.</translation>
    </message>
    <message>
        <source>Tunedeck is at hand when you log in.</source>
        <comment>The desktop may show it when it asks whether to allow this</comment>
        <translation>Tunedeck on käsillä, kun kirjaudut sisään.</translation>
    </message>
    <message>
        <source>The desktop gives no usable answer.</source>
        <comment>Below a check box in the preferences</comment>
        <translation>Työpöytä ei anna kelvollista vastausta.</translation>
    </message>
</context>
<context>
    <name>tunedeck::DockMenuItems</name>
    <message>
        <source>Now Playing</source>
        <comment>For UI labels: Now Playing</comment>
        <translation>Nyt soi</translation>
    </message>
    <message>
        <source>Track</source>
        <comment>For UI labels: Track</comment>
        <translation>Kappale</translation>
    </message>
    <message>
        <source>Artist</source>
        <comment>For UI labels: Artist</comment>
        <translation>Esittäjä</translation>
    </message>
    <message>
        <source>Album</source>
        <comment>For UI labels: Album</comment>
        <translation>Albumi</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Seuraava</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Edellinen</translation>
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
        <translation>Tunedeckin ohje</translation>
    </message>
    <message>
        <source>Page</source>
        <comment>For accessibility: the text of the help page</comment>
        <translation>Sivu</translation>
    </message>
    <message>
        <source>Back</source>
        <comment>Button of the help window: to the page shown before</comment>
        <translation>Takaisin</translation>
    </message>
    <message>
        <source>Forward</source>
        <comment>Button of the help window: undoes Back</comment>
        <translation>Eteenpäin</translation>
    </message>
    <message>
        <source>Search the help</source>
        <comment>For accessibility: the help window&apos;s search field</comment>
        <translation>Etsi ohjeesta</translation>
    </message>
    <message>
        <source>Search</source>
        <comment>In the help window&apos;s empty search field</comment>
        <translation>Etsi</translation>
    </message>
    <message>
        <source>Search results</source>
        <comment>For accessibility: what the help&apos;s search found</comment>
        <translation>Hakutulokset</translation>
    </message>
    <message>
        <source>Contents</source>
        <comment>For accessibility: the list of the help&apos;s pages</comment>
        <translation>Sisällys</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <comment>In place of what the help&apos;s search found</comment>
        <translation>Ei tuloksia</translation>
    </message>
</context>
<context>
    <name>tunedeck::InterfacePreferencesViewController</name>
    <message>
        <source>&amp;Classic appearance</source>
        <comment>Check box in the Interface pane</comment>
        <translation>&amp;Klassinen ulkoasu</translation>
    </message>
    <message>
        <source>The window stays light, even on a dark desktop.</source>
        <comment>Below the check box &quot;Classic appearance&quot;</comment>
        <translation>Ikkuna pysyy vaaleana myös tummalla työpöydällä.</translation>
    </message>
    <message>
        <source>&amp;Dark icon on a dark desktop</source>
        <comment>Check box in the Interface pane: the program&apos;s icon in the dock</comment>
        <translation>&amp;Tumma kuvake tummalla työpöydällä</translation>
    </message>
    <message>
        <source>The icon in the dock is light or dark, like the desktop.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;</comment>
        <translation>Telakan kuvake on vaalea tai tumma työpöydän mukaan.</translation>
    </message>
    <message>
        <source>This desktop always shows the same icon.</source>
        <comment>Below the check box &quot;Dark icon on a dark desktop&quot;, where it has no effect</comment>
        <translation>Tämä työpöytä näyttää aina saman kuvakkeen.</translation>
    </message>
    <message>
        <source>&amp;Hide the volume buttons</source>
        <comment>Check box in the Interface pane</comment>
        <translation>&amp;Piilota äänenvoimakkuuspainikkeet</translation>
    </message>
    <message>
        <source>These are the two speakers beside the volume slider.</source>
        <comment>Below the check box &quot;Hide the volume buttons&quot;</comment>
        <translation>Ne ovat kaksi kaiutinta äänenvoimakkuussäätimen vieressä.</translation>
    </message>
</context>
<context>
    <name>tunedeck::KeepAbove</name>
    <message>
        <source>Keep Above All Other Windows (Floating, on Every Workspace)</source>
        <comment>Menu command; on Sway</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä (kelluvana, jokaisella työtilalla)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Pinned)</source>
        <comment>Menu command; pinned: Hyprland&apos;s word</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä (kiinnitettynä)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Restarts Tunedeck)</source>
        <comment>Menu command</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä (käynnistää Tunedeckin uudelleen)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (The Desktop Refuses)</source>
        <comment>Menu command that had no effect</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä (työpöytä kieltäytyy)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible on Wayland)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä (ei mahdollista Waylandissa)</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows</source>
        <comment>For Menu Command labels: Keep Above All Other Windows</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä</translation>
    </message>
    <message>
        <source>KWin does this for Tunedeck.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>KWin tekee tämän Tunedeckin puolesta.</translation>
    </message>
    <message>
        <source>Sway keeps it above tiled windows, but not above others that float.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Sway pitää sen laatoitettujen ikkunoiden päällä, mutta ei muiden kelluvien päällä.</translation>
    </message>
    <message>
        <source>Hyprland floats and pins it on every workspace.</source>
        <comment>Tooltip of the menu command to keep the window above</comment>
        <translation>Hyprland kelluttaa sen ja kiinnittää sen jokaiselle työtilalle.</translation>
    </message>
    <message>
        <source>Tunedeck restarts through XWayland, where it can do this. It may look less sharp.</source>
        <comment>Tooltip of the menu command to keep the window above; less sharp: on a scaled screen</comment>
        <translation>Tunedeck käynnistyy uudelleen XWaylandin kautta, missä se pystyy tähän. Se voi näyttää vähemmän terävältä.</translation>
    </message>
    <message>
        <source>Use the window&apos;s menu instead: Alt+Space in GNOME, Alt+F3 in KDE Plasma.</source>
        <comment>Tooltip of the menu command to keep the window above all others</comment>
        <translation>Käytä sen sijaan ikkunavalikkoa: Gnomessa Alt+Välilyönti, KDE Plasmassa Alt+F3.</translation>
    </message>
    <message>
        <source>Tunedeck would have to restart through XWayland; choose the command in its Window menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>Tunedeckin pitäisi käynnistyä uudelleen XWaylandin kautta; valitse komento sen Ikkuna-valikosta</translation>
    </message>
    <message>
        <source>On Wayland only the desktop can keep a window above all others; see the window&apos;s menu</source>
        <comment>On the command line: why the action is refused</comment>
        <translation>Waylandissa vain työpöytä voi pitää ikkunan muiden yläpuolella; katso ikkunan valikkoa</translation>
    </message>
    <message>
        <source>The desktop refuses; see the window&apos;s menu</source>
        <comment>On the command line: the desktop has not kept the window above all others</comment>
        <translation>Työpöytä ei salli sitä; katso ikkunan valikkoa</translation>
    </message>
    <message>
        <source>Keep Above All Other Windows (Not Possible in a Sandbox)</source>
        <comment>Menu command that is disabled</comment>
        <translation>Pidä kaikkien muiden ikkunoiden päällä (ei mahdollista hiekkalaatikossa)</translation>
    </message>
    <message>
        <source>The sandbox keeps Tunedeck from the desktop; see the window&apos;s menu</source>
        <comment>On the command line: why the action to keep the window above is refused</comment>
        <translation>Hiekkalaatikko pitää Tunedeckin erossa työpöydästä; katso ikkunan valikkoa</translation>
    </message>
</context>
<context>
    <name>tunedeck::LcdView</name>
    <message>
        <source>Live</source>
        <comment>In place of the times while a live stream plays</comment>
        <translation>Suora</translation>
    </message>
    <message>
        <source>Position</source>
        <comment>For accessibility: the progress slider</comment>
        <translation>Toistokohta</translation>
    </message>
    <message>
        <source>Show or hide the playlists</source>
        <comment>The info button</comment>
        <translation>Näytä tai piilota soittolistat</translation>
    </message>
</context>
<context>
    <name>tunedeck::MainMenu</name>
    <message>
        <source>File</source>
        <comment>Menu title</comment>
        <translation>Tiedosto</translation>
    </message>
    <message>
        <source>Controls</source>
        <comment>Menu title</comment>
        <translation>Ohjaus</translation>
    </message>
    <message>
        <source>Window</source>
        <comment>Menu title</comment>
        <translation>Ikkuna</translation>
    </message>
    <message>
        <source>Help</source>
        <comment>Menu title</comment>
        <translation>Ohje</translation>
    </message>
    <message>
        <source>About Tunedeck</source>
        <comment>Menu command</comment>
        <translation>Tietoja Tunedeckistä</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <comment>Menu command</comment>
        <translation>Etsi päivityksiä…</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <comment>Menu command</comment>
        <translation>Asetukset…</translation>
    </message>
    <message>
        <source>Quit</source>
        <comment>Menu command</comment>
        <translation>Lopeta</translation>
    </message>
    <message>
        <source>Close Window</source>
        <comment>Menu command</comment>
        <translation>Sulje ikkuna</translation>
    </message>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Toista</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>For UI labels: Next</comment>
        <translation>Seuraava</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>For UI labels: Previous</comment>
        <translation>Edellinen</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <comment>Menu command</comment>
        <translation>Lisää äänenvoimakkuutta</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <comment>Menu command</comment>
        <translation>Vähennä äänenvoimakkuutta</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Menu command</comment>
        <translation>Pienennä</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Menu command</comment>
        <translation>Suurenna</translation>
    </message>
    <message>
        <source>Hide Playlists</source>
        <comment>Menu command: close the drawer</comment>
        <translation>Piilota soittolistat</translation>
    </message>
    <message>
        <source>Show Playlists</source>
        <comment>Menu command: open the drawer</comment>
        <translation>Näytä soittolistat</translation>
    </message>
    <message>
        <source>Tunedeck Help</source>
        <comment>Menu command</comment>
        <translation>Tunedeckin ohje</translation>
    </message>
    <message>
        <source>Terms and Conditions</source>
        <comment>Menu command</comment>
        <translation>Käyttöehdot</translation>
    </message>
    <message>
        <source>Run Through XWayland</source>
        <comment>Menu command that can be checked</comment>
        <translation>Suorita XWaylandin kautta</translation>
    </message>
    <message>
        <source>Most desktops can then keep the window above others. It may look less sharp.</source>
        <comment>Tooltip of the menu command to run Tunedeck through XWayland; less sharp: on a scaled screen</comment>
        <translation>Useimmat työpöydät voivat silloin pitää ikkunan muiden päällä. Se voi näyttää vähemmän terävältä.</translation>
    </message>
    <message>
        <source>Follow Automatically</source>
        <comment>Menu command: stop waiting for the chosen player</comment>
        <translation>Seuraa automaattisesti</translation>
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
        <translation>Seuraa &amp;taas</translation>
    </message>
    <message>
        <source>Players that are never followed</source>
        <comment>For accessibility: a list in the General pane</comment>
        <translation>Soittimet, joita ei seurata koskaan</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlayerView</name>
    <message>
        <source>Close</source>
        <comment>Window button</comment>
        <translation>Sulje</translation>
    </message>
    <message>
        <source>Minimize</source>
        <comment>Window button</comment>
        <translation>Pienennä</translation>
    </message>
    <message>
        <source>Zoom</source>
        <comment>Window button</comment>
        <translation>Suurenna</translation>
    </message>
    <message>
        <source>Previous</source>
        <comment>Transport button</comment>
        <translation>Edellinen</translation>
    </message>
    <message>
        <source>Play or pause</source>
        <comment>Transport button</comment>
        <translation>Toista tai keskeytä</translation>
    </message>
    <message>
        <source>Next</source>
        <comment>Transport button</comment>
        <translation>Seuraava</translation>
    </message>
    <message>
        <source>Silence</source>
        <comment>Button at the quiet end of the volume slider</comment>
        <translation>Äänetön</translation>
    </message>
    <message>
        <source>Volume</source>
        <comment>Volume slider</comment>
        <translation>Äänenvoimakkuus</translation>
    </message>
    <message>
        <source>Full volume</source>
        <comment>Button at the loud end of the volume slider</comment>
        <translation>Täysi äänenvoimakkuus</translation>
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
        <translation>Soittolista</translation>
    </message>
    <message>
        <source>Done</source>
        <comment>Button in the drawer: play the chosen playlist</comment>
        <translation>Toista</translation>
    </message>
    <message>
        <source>Play the chosen playlist</source>
        <comment>Tooltip of the done button in the drawer</comment>
        <translation>Toista valittu soittolista</translation>
    </message>
    <message>
        <source>Shuffle</source>
        <comment>Button in the drawer</comment>
        <translation>Satunnaistoisto</translation>
    </message>
    <message>
        <source>Repeat</source>
        <comment>Button in the drawer</comment>
        <translation>Jatkuva toisto</translation>
    </message>
</context>
<context>
    <name>tunedeck::PlaylistViewController</name>
    <message>
        <source>Repeat: off</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Jatkuva toisto: pois päältä</translation>
    </message>
    <message>
        <source>Repeat: one</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Jatkuva toisto: yksi kappale</translation>
    </message>
    <message>
        <source>Repeat: all</source>
        <comment>For accessibility: the repeat button</comment>
        <translation>Jatkuva toisto: kaikki kappaleet</translation>
    </message>
    <message>
        <source>Choose a playlist</source>
        <comment>Tooltip of the playlist picker</comment>
        <translation>Valitse soittolista</translation>
    </message>
    <message>
        <source>The player has no playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Soittimella ei ole soittolistoja</translation>
    </message>
    <message>
        <source>There are no playlist files (.m3u, .m3u8, .pls, .xspf) in your music folder</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Musiikkikansiossa ei ole soittolistatiedostoja (.m3u, .m3u8, .pls, .xspf)</translation>
    </message>
    <message>
        <source>Waiting for the player&apos;s playlists</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Odotetaan soittimen soittolistoja</translation>
    </message>
    <message>
        <source>This player neither offers playlists nor opens playlist files</source>
        <comment>Tooltip of the empty playlist picker</comment>
        <translation>Tämä soitin ei tarjoa soittolistoja eikä avaa soittolistatiedostoja</translation>
    </message>
    <message>
        <source>Shuffle: on</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Satunnaistoisto: päällä</translation>
    </message>
    <message>
        <source>Shuffle: off</source>
        <comment>For accessibility: the shuffle button</comment>
        <translation>Satunnaistoisto: pois päältä</translation>
    </message>
    <message>
        <source>There are more playlists than these</source>
        <comment>After the last playlist, and the playlist picker&apos;s tooltip</comment>
        <translation>Muitakin soittolistoja on</translation>
    </message>
</context>
<context>
    <name>tunedeck::PreferencesViewController</name>
    <message>
        <source>&amp;Remaining time</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>&amp;Jäljellä oleva aika</translation>
    </message>
    <message>
        <source>&amp;Duration</source>
        <comment>Choice in the General pane: what the time on the right is</comment>
        <translation>&amp;Kesto</translation>
    </message>
    <message>
        <source>&amp;Follow player:</source>
        <comment>Caption in the General pane, before the choice of the player</comment>
        <translation>&amp;Seurattava soitin:</translation>
    </message>
    <message>
        <source>Automatic follows the player that is playing.</source>
        <comment>Below the choice of the player to follow</comment>
        <translation>Automaattinen seuraa toistavaa soitinta.</translation>
    </message>
    <message>
        <source>Time on the right:</source>
        <comment>Caption in the General pane: the display&apos;s time on the right</comment>
        <translation>Aika oikealla:</translation>
    </message>
    <message>
        <source>&amp;Never follow:</source>
        <comment>Caption in the General pane, before the list of such players</comment>
        <translation>&amp;Ei seurata koskaan:</translation>
    </message>
    <message>
        <source>&amp;Turn the wheel&apos;s direction</source>
        <comment>Check box in the General pane: which way a mouse wheel turns the volume</comment>
        <translation>K&amp;äännä rullan suunta</translation>
    </message>
    <message>
        <source>If turning it upwards makes the music quieter.</source>
        <comment>Below the check box &quot;Turn the wheel&apos;s direction&quot;</comment>
        <translation>Jos musiikki hiljenee, kun rullaa kiertää ylöspäin.</translation>
    </message>
    <message>
        <source>Volume:</source>
        <comment>Caption in the General pane, before the choice of the wheel&apos;s direction</comment>
        <translation>Äänenvoimakkuus:</translation>
    </message>
    <message>
        <source>&amp;Start with the session</source>
        <comment>Check box in the General pane</comment>
        <translation>Käynnistä &amp;istunnon alussa</translation>
    </message>
    <message>
        <source>Tunedeck is there when you log in.</source>
        <comment>Below the check box &quot;Start with the session&quot;</comment>
        <translation>Tunedeck on valmiina, kun kirjaudut sisään.</translation>
    </message>
    <message>
        <source>Show &amp;only while a player is there</source>
        <comment>Check box in the General pane: about the window</comment>
        <translation>Näytä &amp;vain, kun soitin on käynnissä</translation>
    </message>
    <message>
        <source>The window goes with the last player and comes back with the next.</source>
        <comment>Below the check box &quot;Show only while a player is there&quot;</comment>
        <translation>Ikkuna poistuu viimeisen soittimen mukana ja palaa seuraavan mukana.</translation>
    </message>
    <message>
        <source>Shortcuts in &amp;every window</source>
        <comment>Check box in the General pane: keyboard shortcuts</comment>
        <translation>&amp;Pikanäppäimet kaikissa ikkunoissa</translation>
    </message>
    <message>
        <source>The desktop lets you choose the keys.</source>
        <comment>Below the check box &quot;Shortcuts in every window&quot;</comment>
        <translation>Näppäimet valitaan työpöydän asetuksissa.</translation>
    </message>
    <message>
        <source>Window:</source>
        <comment>Caption in the General pane, before the choices of when the window is there</comment>
        <translation>Ikkuna:</translation>
    </message>
    <message>
        <source>Keyboard:</source>
        <comment>Caption in the General pane, before the choice of shortcuts in every window</comment>
        <translation>Näppäimistö:</translation>
    </message>
</context>
<context>
    <name>tunedeck::SoftwareUpdater</name>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Ohjelmistopäivitys</translation>
    </message>
    <message>
        <source>Tunedeck&apos;s updater is missing or belongs to another version.</source>
        <comment>Updates: title of an error</comment>
        <translation>Tunedeckin päivitin puuttuu tai kuuluu toiseen versioon.</translation>
    </message>
    <message>
        <source>Install Tunedeck again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Asenna Tunedeck uudelleen.</translation>
    </message>
</context>
<context>
    <name>tunedeck::TimeLabelMenu</name>
    <message>
        <source>Menu</source>
        <comment>Title of the time label&apos;s context menu</comment>
        <translation>Valikko</translation>
    </message>
    <message>
        <source>Remaining Time</source>
        <comment>For UI labels: Remaining Time</comment>
        <translation>Jäljellä oleva aika</translation>
    </message>
    <message>
        <source>Duration</source>
        <comment>For UI labels: Duration</comment>
        <translation>Kesto</translation>
    </message>
</context>
<context>
    <name>tunedeck::TrackDisplay</name>
    <message>
        <source>Elapsed Time</source>
        <comment>For UI labels: Elapsed Time</comment>
        <translation>Kulunut aika</translation>
    </message>
    <message>
        <source>Playing through %1</source>
        <comment>Tooltip of the display</comment>
        <extracomment>%1 is an output or several, such as &quot;Headphones and Kitchen&quot;.</extracomment>
        <translation>Toistolaite: %1</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdatePreferencesViewController</name>
    <message>
        <source>Check for Updates…</source>
        <comment>Button in the Updates pane</comment>
        <translation>Etsi päivityksiä…</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <comment>Button in the Updates pane: opens the page about updates</comment>
        <translation>&amp;Ohje</translation>
    </message>
    <message>
        <source>Tunedeck %1</source>
        <comment>In the Updates pane; %1 is the version that runs</comment>
        <translation>Tunedeck %1</translation>
    </message>
    <message>
        <source>Tunedeck looks for a newer version only when you ask. You choose whether to download it.</source>
        <comment>In the Updates pane</comment>
        <translation>Tunedeck etsii uudempaa versiota vain, kun pyydät sitä. Sinä päätät, ladataanko se.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself. If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>In the Updates pane</comment>
        <translation>Tämä Tunedeck-asennus ei etsi uusia versioita itse. Jos se tuli järjestelmäsi mukana, uudet versiot tulevat järjestelmän päivitysten mukana. Jos koostit sen itse, koosta se uudelleen uudemmasta lähdekoodista.</translation>
    </message>
</context>
<context>
    <name>tunedeck::UpdateWindow</name>
    <message>
        <source>The update server could not be reached.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivityspalvelimeen ei saatu yhteyttä.</translation>
    </message>
    <message>
        <source>Make sure that this computer is connected to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Varmista, että tämä tietokone on yhteydessä internetiin, ja etsi päivityksiä sitten uudelleen.</translation>
    </message>
    <message>
        <source>The connection to the update server is not secure.</source>
        <comment>Updates: title of an error</comment>
        <translation>Yhteys päivityspalvelimeen ei ole suojattu.</translation>
    </message>
    <message>
        <source>Nothing was downloaded. Make sure that this computer&apos;s date and time are right, or try again on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Mitään ei ladattu. Varmista, että tämän tietokoneen päivämäärä ja kellonaika ovat oikein, tai yritä uudelleen toisessa verkossa.</translation>
    </message>
    <message>
        <source>The update server redirects too often.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivityspalvelin uudelleenohjaa liian monta kertaa.</translation>
    </message>
    <message>
        <source>The update server stopped responding or is too slow.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivityspalvelin lakkasi vastaamasta tai on liian hidas.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, or check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tarkista internetyhteytesi tai etsi päivityksiä myöhemmin uudelleen.</translation>
    </message>
    <message>
        <source>The update server answered with an error.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivityspalvelin vastasi virheellä.</translation>
    </message>
    <message>
        <source>Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Etsi päivityksiä myöhemmin uudelleen.</translation>
    </message>
    <message>
        <source>The connection to the update server was lost.</source>
        <comment>Updates: title of an error</comment>
        <translation>Yhteys päivityspalvelimeen katkesi.</translation>
    </message>
    <message>
        <source>Check your connection to the internet, then check for updates again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tarkista internetyhteytesi ja etsi päivityksiä sitten uudelleen.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck cannot check for updates.</source>
        <comment>Updates: title of an error</comment>
        <translation>Tämä Tunedeck-asennus ei voi etsiä päivityksiä.</translation>
    </message>
    <message>
        <source>It was built with an unusable address or key. Download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Siihen on koottaessa määritetty osoite tai avain, jota ei voi käyttää. Lataa uusi versio sieltä, mistä sait tämän.</translation>
    </message>
    <message>
        <source>The software updater could not be opened.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysohjelmaa ei voitu avata.</translation>
    </message>
    <message>
        <source>Look for it among your desktop&apos;s applications.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Etsi se työpöytäsi sovellusten joukosta.</translation>
    </message>
    <message>
        <source>The list of updates is too long.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysluettelo on liian pitkä.</translation>
    </message>
    <message>
        <source>Tunedeck stopped reading it. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck keskeytti sen lukemisen. Etsi päivityksiä myöhemmin uudelleen.</translation>
    </message>
    <message>
        <source>The list of updates could not be read.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysluetteloa ei voitu lukea.</translation>
    </message>
    <message>
        <source>A new version is available, but it cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Uusi versio on saatavilla, mutta siihen ei voi luottaa.</translation>
    </message>
    <message>
        <source>The server does not say how to verify it, so it was not downloaded. Check for updates again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Palvelin ei kerro, miten version voi tarkistaa, joten sitä ei ladattu. Etsi päivityksiä myöhemmin uudelleen.</translation>
    </message>
    <message>
        <source>The download is incomplete.</source>
        <comment>Updates: title of an error</comment>
        <translation>Lataus jäi vajaaksi.</translation>
    </message>
    <message>
        <source>It was deleted. Check your connection to the internet, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Ladattu tiedosto poistettiin. Tarkista internetyhteytesi ja yritä sitten uudelleen.</translation>
    </message>
    <message>
        <source>The download is not the expected file.</source>
        <comment>Updates: title of an error</comment>
        <translation>Ladattu tiedosto ei ole se, jota odotettiin.</translation>
    </message>
    <message>
        <source>It is larger than announced, so it was deleted. Try again later.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Se on ilmoitettua suurempi, joten se poistettiin. Yritä myöhemmin uudelleen.</translation>
    </message>
    <message>
        <source>The download cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Ladattuun tiedostoon ei voi luottaa.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. It was deleted. Try again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Se ei ole peräisin Tunedeckin tekijöiltä, tai sitä on muutettu matkalla. Se poistettiin. Yritä uudelleen myöhemmin tai toisessa verkossa.</translation>
    </message>
    <message>
        <source>The download could not be saved.</source>
        <comment>Updates: title of an error</comment>
        <translation>Ladattua tiedostoa ei voitu tallentaa.</translation>
    </message>
    <message>
        <source>Make sure that your download folder has free space and that you may write to it, then try again.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Varmista, että latauskansiossa on tilaa ja että sinulla on siihen kirjoitusoikeus, ja yritä sitten uudelleen.</translation>
    </message>
    <message>
        <source>Software Update</source>
        <comment>Updates: title of the window</comment>
        <translation>Ohjelmistopäivitys</translation>
    </message>
    <message>
        <source>Progress</source>
        <comment>Updates: for accessibility, the progress bar</comment>
        <translation>Edistyminen</translation>
    </message>
    <message>
        <source>What is new</source>
        <comment>Updates: for accessibility, the text on what is new in a version</comment>
        <translation>Mitä uutta</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <comment>Updates: a search is under way</comment>
        <translation>Etsitään päivityksiä…</translation>
    </message>
    <message>
        <source>Tunedeck is up to date.</source>
        <comment>Updates: there is no newer version</comment>
        <translation>Tunedeck on ajan tasalla.</translation>
    </message>
    <message>
        <source>You have version %1, which is the newest.</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Käytössäsi on versio %1, joka on uusin.</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available.</source>
        <comment>Updates: there is a newer version</comment>
        <translation>Tunedeckistä on saatavilla uusi versio.</translation>
    </message>
    <message>
        <source>Version %1 is available; you have version %2.</source>
        <comment>Updates: %1 and %2 are versions</comment>
        <translation>Versio %1 on saatavilla; käytössäsi on versio %2.</translation>
    </message>
    <message>
        <source>&amp;Download</source>
        <comment>Updates: button that downloads the new version</comment>
        <translation>&amp;Lataa</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <comment>Updates: button that leaves the new version for another day</comment>
        <translation>&amp;Myöhemmin</translation>
    </message>
    <message>
        <source>Downloading Tunedeck %1…</source>
        <comment>Updates: %1 is a version</comment>
        <translation>Ladataan Tunedeckin versiota %1…</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <comment>Updates: how much has come of a download, such as 1.2 MB of 3 MB</comment>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Checking that the download is genuine…</source>
        <comment>Updates: the file&apos;s signature is looked at</comment>
        <translation>Tarkistetaan ladatun tiedoston aitoutta…</translation>
    </message>
    <message>
        <source>The new version has been downloaded.</source>
        <comment>Updates: the file is there</comment>
        <translation>Uusi versio on ladattu.</translation>
    </message>
    <message>
        <source>It was verified and saved as “%1” in “%2”. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>Tiedosto tarkistettiin ja tallennettiin nimellä ”%1” kansioon ”%2”. Asenna se lopettamalla Tunedeck ja avaamalla tiedosto.</translation>
    </message>
    <message>
        <source>Show in &amp;Folder</source>
        <comment>Updates: button that shows the file in the file manager</comment>
        <translation>Näytä &amp;kansiossa</translation>
    </message>
    <message>
        <source>&amp;Open Software Updater</source>
        <comment>Updates: button that starts the system&apos;s own program for updates</comment>
        <translation>&amp;Avaa päivitysohjelma</translation>
    </message>
    <message>
        <source>A new version of Tunedeck is available, but not for your system.</source>
        <comment>Updates: there is a newer version, which needs a newer system</comment>
        <translation>Tunedeckistä on uusi versio, mutta ei järjestelmällesi.</translation>
    </message>
    <message>
        <source>Version %1 needs version %2 of your system or a later one. You have version %3, the newest that runs on your system.</source>
        <comment>Updates: %1 and %3 are versions of Tunedeck, %2 is one of the operating system</comment>
        <translation>Versio %1 tarvitsee järjestelmäsi version %2 tai uudemman. Sinulla on versio %3, joka on uusin järjestelmässäsi toimiva.</translation>
    </message>
    <message>
        <source>This copy of Tunedeck does not look for new versions itself.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Tämä Tunedeck-asennus ei etsi uusia versioita itse.</translation>
    </message>
    <message>
        <source>If it came with your system, new versions come with the system&apos;s updates. If you built it yourself, build it again from newer sources.</source>
        <comment>Updates: Tunedeck came with the system, or was built by hand</comment>
        <translation>Jos se tuli järjestelmäsi mukana, uudet versiot tulevat järjestelmän päivitysten mukana. Jos koostit sen itse, koosta se uudelleen uudemmasta lähdekoodista.</translation>
    </message>
    <message>
        <source>The list of updates is not signed.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysluetteloa ei ole allekirjoitettu.</translation>
    </message>
    <message>
        <source>Tunedeck trusts only a list that its makers have signed. Check for updates again later, or download a new version from where you got this one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck luottaa vain tekijöidensä allekirjoittamaan luetteloon. Etsi päivityksiä myöhemmin uudelleen tai lataa uusi versio sieltä, mistä sait tämän.</translation>
    </message>
    <message>
        <source>The list of updates cannot be trusted.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysluetteloon ei voi luottaa.</translation>
    </message>
    <message>
        <source>It does not come from Tunedeck&apos;s makers, or it was changed on the way. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Se ei ole peräisin Tunedeckin tekijöiltä, tai sitä on muutettu matkalla. Etsi päivityksiä uudelleen myöhemmin tai toisessa verkossa.</translation>
    </message>
    <message>
        <source>The list of updates is older than one seen before.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysluettelo on vanhempi kuin aiemmin nähty.</translation>
    </message>
    <message>
        <source>Tunedeck does not go back to an older list, which may hide new versions. Check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Tunedeck ei palaa vanhempaan luetteloon, joka voi salata uusia versioita. Etsi päivityksiä uudelleen myöhemmin tai toisessa verkossa.</translation>
    </message>
    <message>
        <source>The list of updates has expired.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysluettelo on vanhentunut.</translation>
    </message>
    <message>
        <source>This computer&apos;s date is %1. If that is wrong, set the date. If it is right, check for updates again later, or on another network.</source>
        <comment>Updates: what to do about an error; %1 is a date</comment>
        <translation>Tämän tietokoneen päivämäärä on %1. Jos se on väärä, korjaa se. Jos se on oikea, etsi päivityksiä uudelleen myöhemmin tai toisessa verkossa.</translation>
    </message>
    <message>
        <source>The file is not the one that was downloaded.</source>
        <comment>Updates: title of an error</comment>
        <translation>Tiedosto ei ole se, joka ladattiin.</translation>
    </message>
    <message>
        <source>It was changed, moved or deleted. Do not open it. Check for updates again to download a new one.</source>
        <comment>Updates: what to do about an error</comment>
        <translation>Sitä on muutettu tai se on siirretty tai poistettu. Älä avaa sitä. Lataa uusi etsimällä päivityksiä uudelleen.</translation>
    </message>
    <message>
        <source>The file is genuine.</source>
        <comment>Updates: the file was verified again</comment>
        <translation>Tiedosto on aito.</translation>
    </message>
    <message>
        <source>“%1” in “%2” is the file that Tunedeck&apos;s makers signed. To install it, quit Tunedeck and open the file.</source>
        <comment>Updates: %1 is the name of a file, %2 of a folder</comment>
        <translation>”%1” kansiossa ”%2” on Tunedeckin tekijöiden allekirjoittama tiedosto. Asenna se lopettamalla Tunedeck ja avaamalla tiedosto.</translation>
    </message>
    <message>
        <source>&amp;Verify Again</source>
        <comment>Updates: button that checks once more that the saved file is genuine</comment>
        <translation>&amp;Tarkista uudelleen</translation>
    </message>
    <message>
        <source>The signature of the list of updates could not be fetched.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivitysluettelon allekirjoitusta ei voitu hakea.</translation>
    </message>
    <message>
        <source>The update server does not have the file.</source>
        <comment>Updates: title of an error</comment>
        <translation>Päivityspalvelimella ei ole tiedostoa.</translation>
    </message>
</context>
<context>
    <name>tunedeck::ViewController</name>
    <message>
        <source>Play</source>
        <comment>For UI labels: Play</comment>
        <translation>Toista</translation>
    </message>
    <message>
        <source>Stop</source>
        <comment>For UI labels: Stop</comment>
        <translation>Pysäytä</translation>
    </message>
    <message>
        <source>Pause</source>
        <comment>For UI labels: Pause</comment>
        <translation>Keskeytä</translation>
    </message>
</context>
</TS>
