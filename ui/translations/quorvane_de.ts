<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>Quorvane</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open Project...</source>
        <translation>Projekt ö&amp;ffnen ...</translation>
    </message>
    <message>
        <source>&amp;Results...</source>
        <translation>&amp;Ergebnisse ...</translation>
    </message>
    <message>
        <source>Score&amp;board</source>
        <translation>An&amp;zeigetafel</translation>
    </message>
    <message>
        <source>Record Sessio&amp;n</source>
        <translation>Sitzung a&amp;ufzeichnen</translation>
    </message>
    <message>
        <source>Print Pre&amp;view</source>
        <translation>Druck&amp;vorschau</translation>
    </message>
    <message>
        <source>Pro&amp;test Sheet...</source>
        <translation>Pro&amp;testblatt ...</translation>
    </message>
    <message>
        <source>&amp;Save as PDF...</source>
        <translation>Als &amp;PDF speichern ...</translation>
    </message>
    <message>
        <source>&amp;Printer Setup...</source>
        <translation>Drucker ein&amp;richten ...</translation>
    </message>
    <message>
        <source>Enable AutoPrint</source>
        <translation>Selbsttätig drucken</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>Ed&amp;it</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Laps and Cuts...</source>
        <translation>R&amp;unden und Cuts ...</translation>
    </message>
    <message>
        <source>&amp;Laps and Cuts ...</source>
        <translation>&amp;Runden und Cuts ...</translation>
    </message>
    <message>
        <source>&amp;Amend Race</source>
        <translation>Rennen &amp;berichtigen</translation>
    </message>
    <message>
        <source>&amp;Bring Back Last Race</source>
        <translation>&amp;Letztes Rennen zurückholen</translation>
    </message>
    <message>
        <source>&amp;Set Race Info</source>
        <translation>&amp;Wettbewerb</translation>
    </message>
    <message>
        <source>Set &amp;Event Name</source>
        <translation>&amp;Name der Veranstaltung</translation>
    </message>
    <message>
        <source>Set &amp;Heats per Round</source>
        <translation>&amp;Läufe je Durchgang</translation>
    </message>
    <message>
        <source>Set &amp;Lane Colors</source>
        <translation>&amp;Farben der Bahnen</translation>
    </message>
    <message>
        <source>&amp;Timer Settings...</source>
        <translation>&amp;Zeitmessung ...</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keyboard</source>
        <translation>&amp;Tastatur</translation>
    </message>
    <message>
        <source>&amp;About Quorvane...</source>
        <translation>Ü&amp;ber Quorvane ...</translation>
    </message>
    <message>
        <source>Vie&amp;w</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Scheme</source>
        <translation>&amp;Farbschema</translation>
    </message>
    <message>
        <source>&amp;System</source>
        <translation>&amp;System</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>&amp;Dark</source>
        <translation>&amp;Dunkel</translation>
    </message>
    <message>
        <source>&amp;Outdoor</source>
        <translation>Im &amp;Freien</translation>
    </message>
    <message>
        <source>The colours that the desktop asks for</source>
        <translation>Die Farben, die der Desktop wünscht</translation>
    </message>
    <message>
        <source>Dark letters on light windows</source>
        <translation>Dunkle Schrift auf hellen Fenstern</translation>
    </message>
    <message>
        <source>Light letters on dark windows</source>
        <translation>Helle Schrift auf dunklen Fenstern</translation>
    </message>
    <message>
        <source>Black on white, thick lines and strong colours, for the sun</source>
        <translation>Schwarz auf Weiß, dicke Linien und kräftige Farben, für die Sonne</translation>
    </message>
    <message>
        <source>Race</source>
        <translation>Rennen</translation>
    </message>
    <message>
        <source>Race clock</source>
        <translation>Rennuhr</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Race mode</source>
        <translation>Rennmodus</translation>
    </message>
    <message>
        <source>Race mode now</source>
        <translation>Rennmodus jetzt</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Modus</translation>
    </message>
    <message>
        <source>Notice</source>
        <translation>Meldung</translation>
    </message>
    <message>
        <source>Radio</source>
        <translation>Funk</translation>
    </message>
    <message>
        <source>Station link</source>
        <translation>Verbindung zu den Stationen</translation>
    </message>
    <message>
        <source>Receiving</source>
        <translation>Empfang</translation>
    </message>
    <message>
        <source>Sending</source>
        <translation>Senden</translation>
    </message>
    <message>
        <source>R</source>
        <translation>E</translation>
    </message>
    <message>
        <source>T</source>
        <translation>S</translation>
    </message>
    <message>
        <source>lit</source>
        <translation>leuchtet</translation>
    </message>
    <message>
        <source>no answer yet</source>
        <translation>noch keine Antwort</translation>
    </message>
    <message>
        <source>Previous heat</source>
        <translation>Voriger Lauf</translation>
    </message>
    <message>
        <source>Next heat</source>
        <translation>Nächster Lauf</translation>
    </message>
    <message>
        <source>Previous round</source>
        <translation>Voriger Durchgang</translation>
    </message>
    <message>
        <source>Next round</source>
        <translation>Nächster Durchgang</translation>
    </message>
    <message>
        <source>Heat</source>
        <translation>Lauf</translation>
    </message>
    <message>
        <source>Round</source>
        <translation>Durchgang</translation>
    </message>
    <message>
        <source>H&amp;eat</source>
        <translation>Lau&amp;f</translation>
    </message>
    <message>
        <source>Ro&amp;und</source>
        <translation>D&amp;urchg.</translation>
    </message>
    <message>
        <source>&amp;Comments</source>
        <translation>Bemer&amp;kungen</translation>
    </message>
    <message>
        <source>Comments</source>
        <translation>Bemerkungen</translation>
    </message>
    <message>
        <source>Refly</source>
        <translation>Neuflug</translation>
    </message>
    <message>
        <source>Ref&amp;ly</source>
        <translation>Neuf&amp;lug</translation>
    </message>
    <message>
        <source>60 Second Count</source>
        <translation>60-Sekunden-Countdown</translation>
    </message>
    <message>
        <source>&amp;60 Second Count</source>
        <translation>&amp;60-Sekunden-Countdown</translation>
    </message>
    <message>
        <source>Audio Countdown</source>
        <translation>Countdown mit Ton</translation>
    </message>
    <message>
        <source>&amp;Audio Countdown</source>
        <translation>Countdown mit T&amp;on</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>S&amp;tart</source>
        <translation>S&amp;tart</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>Zu&amp;rücksetzen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Sa&amp;ve</source>
        <translation>S&amp;peichern</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>Drucken</translation>
    </message>
    <message>
        <source>&amp;Print</source>
        <translation>Dru&amp;cken</translation>
    </message>
    <message>
        <source>Order</source>
        <translation>Platzierung</translation>
    </message>
    <message>
        <source>&amp;Order</source>
        <translation>Plat&amp;zierung</translation>
    </message>
    <message>
        <source>NOT SAVED</source>
        <translation>NICHT GESPEICHERT</translation>
    </message>
    <message>
        <source>CONTROLLER</source>
        <translation>STEUERUNG</translation>
    </message>
    <message>
        <source>Waiting</source>
        <translation>Warten</translation>
    </message>
    <message>
        <source>Holding</source>
        <translation>Halt</translation>
    </message>
    <message>
        <source>Hold</source>
        <translation>Halt</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keiner</translation>
    </message>
    <message>
        <source>No Comm</source>
        <translation>Kein Funk</translation>
    </message>
    <message>
        <source>Race %1</source>
        <translation>Rennen %1</translation>
    </message>
    <message>
        <source>Race %1 REFLY</source>
        <translation>Rennen %1 NEUFLUG</translation>
    </message>
    <message>
        <source>%1 AMEND</source>
        <translation>%1 BERICHTIGEN</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Rückgängig: %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Wiederholen: %1</translation>
    </message>
    <message>
        <source>strike of %1, lane %2</source>
        <translation>Streichung von %1, Bahn %2</translation>
    </message>
    <message>
        <source>%1, lane %2</source>
        <translation>%1, Bahn %2</translation>
    </message>
    <message>
        <source>lap %1</source>
        <translation>Runde %1</translation>
    </message>
    <message>
        <source>cut %1</source>
        <translation>Cut %1</translation>
    </message>
    <message>
        <source>cut</source>
        <translation>Cut</translation>
    </message>
    <message>
        <source>turn</source>
        <translation>Wende</translation>
    </message>
    <message>
        <source>Lane %1</source>
        <translation>Bahn %1</translation>
    </message>
    <message>
        <source>Lap %1</source>
        <translation>Runde %1</translation>
    </message>
    <message>
        <source>Lap</source>
        <translation>Runde</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Cut</translation>
    </message>
    <message>
        <source>Turn</source>
        <translation>Wende</translation>
    </message>
    <message>
        <source>Cuts(%1)</source>
        <translation>Cuts(%1)</translation>
    </message>
    <message>
        <source>No Cut</source>
        <translation>Kein Cut</translation>
    </message>
    <message>
        <source>Cut %1</source>
        <translation>Cut %1</translation>
    </message>
    <message>
        <source>Cut withdrawn %1</source>
        <translation>Cut zurückgenommen %1</translation>
    </message>
    <message>
        <source>9 Laps</source>
        <translation>9 Runden</translation>
    </message>
    <message>
        <source>Low</source>
        <translation>Unten</translation>
    </message>
    <message>
        <source>High</source>
        <translation>Oben</translation>
    </message>
    <message>
        <source>Low Green</source>
        <translation>Unten Grün</translation>
    </message>
    <message>
        <source>Low Red</source>
        <translation>Unten Rot</translation>
    </message>
    <message>
        <source>High Green</source>
        <translation>Oben Grün</translation>
    </message>
    <message>
        <source>High Red</source>
        <translation>Oben Rot</translation>
    </message>
    <message>
        <source>High Blue</source>
        <translation>Oben Blau</translation>
    </message>
    <message>
        <source>panel</source>
        <translation>Feld</translation>
    </message>
    <message>
        <source>name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>low marking</source>
        <translation>untere Markierung</translation>
    </message>
    <message>
        <source>high marking</source>
        <translation>obere Markierung</translation>
    </message>
    <message>
        <source>place</source>
        <translation>Platz</translation>
    </message>
    <message>
        <source>status</source>
        <translation>Stand</translation>
    </message>
    <message>
        <source>lap %1 result</source>
        <translation>Ergebnis Runde %1</translation>
    </message>
    <message>
        <source>column %1</source>
        <translation>Spalte %1</translation>
    </message>
    <message>
        <source>cell %1</source>
        <translation>Zelle %1</translation>
    </message>
    <message>
        <source>mark %1</source>
        <translation>Marke %1</translation>
    </message>
    <message>
        <source>Lap  %1
Cut  %2</source>
        <translation>Runde  %1
Cut  %2</translation>
    </message>
    <message>
        <source>First</source>
        <translation>Erster</translation>
    </message>
    <message>
        <source>Second</source>
        <translation>Zweiter</translation>
    </message>
    <message>
        <source>Third</source>
        <translation>Dritter</translation>
    </message>
    <message>
        <source>Fourth</source>
        <translation>Vierter</translation>
    </message>
    <message>
        <source>DNF</source>
        <translation>DNF</translation>
    </message>
    <message>
        <source>DBL</source>
        <translation>DBL</translation>
    </message>
    <message>
        <source>DBL CUT</source>
        <translation>DOPPELCUT</translation>
    </message>
    <message>
        <source>Dbl Cut</source>
        <translation>Doppelcut</translation>
    </message>
    <message>
        <source>Locked</source>
        <translation>Gesperrt</translation>
    </message>
    <message>
        <source>%1 MPH</source>
        <translation>%1 MPH</translation>
    </message>
    <message>
        <source>Finish Order</source>
        <translation>Platzierung</translation>
    </message>
    <message>
        <source>Enter finish order</source>
        <translation>Platz im Ziel eingeben</translation>
    </message>
    <message>
        <source>Locked while a race is flown</source>
        <translation>Gesperrt, solange ein Rennen geflogen wird</translation>
    </message>
    <message>
        <source>Not entered: answer this box first</source>
        <translation>Nicht eingetragen: Erst diese Frage beantworten</translation>
    </message>
    <message>
        <source>Locked: this race is saved</source>
        <translation>Gesperrt: Dieses Rennen ist gespeichert</translation>
    </message>
    <message>
        <source>No race is on the console</source>
        <translation>Auf der Konsole ist kein Rennen</translation>
    </message>
    <message>
        <source>%1;%2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>%1 now lane %2, no more lane %3</source>
        <translation>%1 ist jetzt Bahn %2, nicht mehr Bahn %3</translation>
    </message>
    <message>
        <source>Race %1 is amended. Amendment %2</source>
        <translation>Rennen %1 ist berichtigt. Berichtigung %2</translation>
    </message>
    <message>
        <source>Race %1 was thrown away: Bring Back Last Race gets it back</source>
        <translation>Rennen %1 ist verworfen: Letztes Rennen zurückholen bringt es zurück</translation>
    </message>
    <message>
        <source>Race %1 is in the project already: saved as its refly, because no other number is free</source>
        <translation>Rennen %1 steht schon im Projekt: als sein Neuflug gespeichert, weil keine andere Nummer frei ist</translation>
    </message>
    <message>
        <source>Race %1 is in the project already: saved as %2</source>
        <translation>Rennen %1 steht schon im Projekt: gespeichert als %2</translation>
    </message>
    <message>
        <source>Refly %1 is in the project already: saved as %2</source>
        <translation>Neuflug %1 steht schon im Projekt: gespeichert als %2</translation>
    </message>
    <message>
        <source>Lane %1 takes no more entries: its log is full</source>
        <translation>Bahn %1 nimmt keine Einträge mehr an: Ihr Protokoll ist voll</translation>
    </message>
    <message>
        <source>The clock was %1 s off the starter's: the laps so far are %2 by it</source>
        <translation>Die Uhr wich %1 s von der des Starters ab: Die bisherigen Runden sind um so viel %2</translation>
    </message>
    <message>
        <source>shortened</source>
        <translation>verkürzt</translation>
    </message>
    <message>
        <source>lengthened</source>
        <translation>verlängert</translation>
    </message>
    <message>
        <source>The starter is counting. The race started by hand keeps its own clock</source>
        <translation>Der Starter zählt. Das von Hand gestartete Rennen behält seine eigene Uhr</translation>
    </message>
    <message>
        <source>A novice flies nine laps for ten. Set it before the start: it stays as it is in a race</source>
        <translation>Ein Anfänger fliegt neun Runden statt zehn. Vor dem Start setzen: Im Rennen bleibt es, wie es ist</translation>
    </message>
    <message>
        <source>A race has begun meanwhile: what you chose was left undone</source>
        <translation>Inzwischen hat ein Rennen begonnen: Das Gewählte ist unterblieben</translation>
    </message>
    <message>
        <source>Race over: save it first</source>
        <translation>Rennen zu Ende: erst speichern</translation>
    </message>
    <message>
        <source>Its corrections: Bring Back Last Race</source>
        <translation>Seine Korrekturen: Letztes Rennen zurückholen</translation>
    </message>
    <message>
        <source>Race recovered: it had not begun, start it again</source>
        <translation>Rennen wiederhergestellt: es hatte nicht begonnen, neu starten</translation>
    </message>
    <message>
        <source>What was thrown away before</source>
        <translation>Was vorher weggeworfen wurde</translation>
    </message>
    <message>
        <source>Race recovered: look at it, then save it</source>
        <translation>Rennen wiederhergestellt: ansehen, dann speichern</translation>
    </message>
    <message>
        <source>Race recovered: %1 s were not judged</source>
        <translation>Rennen wiederhergestellt: %1 s wurden nicht gewertet</translation>
    </message>
    <message>
        <source>Race %1 has been changed since: its amendment is kept in %2</source>
        <translation>Rennen %1 ist seither geändert worden: Seine Berichtigung liegt in %2</translation>
    </message>
    <message>
        <source>%1 is kept in %2</source>
        <translation>%1 liegt in %2</translation>
    </message>
    <message>
        <source>The race that was not recovered</source>
        <translation>Das nicht wiederhergestellte Rennen</translation>
    </message>
    <message>
        <source>The project before another program took a race out of it</source>
        <translation>Das Projekt, bevor ein anderes Programm ein Rennen herausnahm,</translation>
    </message>
    <message>
        <source>What could not be read</source>
        <translation>Was nicht zu lesen war</translation>
    </message>
    <message>
        <source>What another contest could not save</source>
        <translation>Was ein anderer Wettbewerb nicht speichern konnte,</translation>
    </message>
    <message>
        <source>What could not be saved before is in the project now</source>
        <translation>Was vorher nicht gespeichert werden konnte, steht jetzt im Projekt</translation>
    </message>
    <message>
        <source>Amendment recovered: Save writes it in its place, Reset leaves the race as it was</source>
        <translation>Berichtigung wiederhergestellt: Speichern schreibt sie an ihre Stelle, Zurücksetzen lässt das Rennen, wie es war</translation>
    </message>
    <message>
        <source>Amendment of %1</source>
        <translation>Berichtigung von %1</translation>
    </message>
    <message>
        <source>Recover this amendment?</source>
        <translation>Diese Berichtigung wiederherstellen?</translation>
    </message>
    <message>
        <source>Writing %1 takes long</source>
        <translation>Das Schreiben von %1 dauert lange</translation>
    </message>
    <message>
        <source>What was recorded since the last save that worked is kept beside the project until Quorvane opens it again.</source>
        <translation>Was seit dem letzten gelungenen Speichern erfasst wurde, bleibt neben dem Projekt aufbewahrt, bis Quorvane es wieder öffnet.</translation>
    </message>
    <message>
        <source>&amp;Manual</source>
        <translation>&amp;Handbuch</translation>
    </message>
    <message>
        <source>Ctrl+F1 opens the page of the window in hand</source>
        <translation>Strg+F1 öffnet die Seite zum Fenster, das vorn liegt</translation>
    </message>
    <message>
        <source>No program shows web pages. The manual is %1</source>
        <translation>Kein Programm zeigt Webseiten. Das Handbuch ist %1</translation>
    </message>
    <message>
        <source>The manual is not installed: %1</source>
        <translation>Das Handbuch ist nicht installiert: %1</translation>
    </message>
    <message>
        <source>Something failed and was left undone: %1</source>
        <translation>Etwas ist misslungen und unterblieben: %1</translation>
    </message>
    <message>
        <source>Overflow</source>
        <translation>Überlauf</translation>
    </message>
    <message>
        <source>Subscript out of range</source>
        <translation>Index außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>Invalid use of Null</source>
        <translation>Unzulässige Verwendung von Null</translation>
    </message>
    <message>
        <source>A crash would lose this race: %1</source>
        <translation>Ein Absturz würde dieses Rennen verlieren: %1</translation>
    </message>
    <message>
        <source>Not saved: %1</source>
        <translation>Nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>NOT SAVED: %1</source>
        <translation>NICHT GESPEICHERT: %1</translation>
    </message>
    <message>
        <source>%1 is not a file</source>
        <translation>%1 ist keine Datei</translation>
    </message>
    <message>
        <source>%1 was emptied by another program</source>
        <translation>%1 wurde von einem anderen Programm geleert</translation>
    </message>
    <message>
        <source>%1 is no project any more</source>
        <translation>%1 ist kein Projekt mehr</translation>
    </message>
    <message>
        <source>%1 holds another contest, which is left alone</source>
        <translation>%1 enthält einen anderen Wettbewerb, der unangetastet bleibt</translation>
    </message>
    <message>
        <source>Cannot read %1: %2</source>
        <translation>Kann %1 nicht lesen: %2</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>Kann %1 nicht schreiben: %2</translation>
    </message>
    <message>
        <source>Amending: Save writes it in its place, Reset leaves it as it was</source>
        <translation>Berichtigen: Speichern schreibt es an seine Stelle, Zurücksetzen lässt es, wie es war</translation>
    </message>
    <message>
        <source>Not amended: the race stays as it was saved</source>
        <translation>Nicht berichtigt: Das Rennen bleibt, wie es gespeichert war</translation>
    </message>
    <message>
        <source>Not amended: another program has changed this race</source>
        <translation>Nicht berichtigt: Ein anderes Programm hat dieses Rennen geändert</translation>
    </message>
    <message>
        <source>A race is being flown: the session was kept from ending</source>
        <translation>Es wird ein Rennen geflogen: Die Sitzung wurde am Ende gehindert</translation>
    </message>
    <message>
        <source>Recording into %1, as %2 has a session already</source>
        <translation>Aufzeichnung in %1, weil %2 schon eine Sitzung enthält</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufzeichnung</translation>
    </message>
    <message>
        <source>Recording stopped: %1</source>
        <translation>Aufzeichnung beendet: %1</translation>
    </message>
    <message>
        <source>the file may not be replaced, %1</source>
        <translation>die Datei darf nicht ersetzt werden, %1</translation>
    </message>
    <message>
        <source>The file cannot be written</source>
        <translation>die Datei lässt sich nicht schreiben</translation>
    </message>
    <message>
        <source>The session is too long by now to be recorded from its start.</source>
        <translation>die Sitzung ist schon zu lang, um von ihrem Anfang an aufgezeichnet zu werden.</translation>
    </message>
    <message>
        <source>Laps and Cuts</source>
        <translation>Runden und Cuts</translation>
    </message>
    <message>
        <source>No.</source>
        <translation>Nr.</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Entry</source>
        <translation>Eintrag</translation>
    </message>
    <message>
        <source>By</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>hand</source>
        <translation>Hand</translation>
    </message>
    <message>
        <source>TM or hand</source>
        <translation>TM oder Hand</translation>
    </message>
    <message>
        <source>Lane</source>
        <translation>Bahn</translation>
    </message>
    <message>
        <source>&amp;Lane</source>
        <translation>&amp;Bahn</translation>
    </message>
    <message>
        <source>Entries of the lane</source>
        <translation>Einträge der Bahn</translation>
    </message>
    <message>
        <source>Strike</source>
        <translation>Streichen</translation>
    </message>
    <message>
        <source>&amp;Strike</source>
        <translation>&amp;Streichen</translation>
    </message>
    <message>
        <source>Insert Lap...</source>
        <translation>Runde einfügen ...</translation>
    </message>
    <message>
        <source>&amp;Insert Lap...</source>
        <translation>Runde &amp;einfügen ...</translation>
    </message>
    <message>
        <source>Move Cut...</source>
        <translation>Cut versetzen ...</translation>
    </message>
    <message>
        <source>&amp;Move Cut...</source>
        <translation>Cut &amp;versetzen ...</translation>
    </message>
    <message>
        <source>Told</source>
        <translation>Mitteilung</translation>
    </message>
    <message>
        <source>Corrections on this lane</source>
        <translation>Korrekturen auf dieser Bahn</translation>
    </message>
    <message>
        <source>Insert Lap</source>
        <translation>Runde einfügen</translation>
    </message>
    <message>
        <source>Race time in seconds at which lane %1 completed the lap:</source>
        <translation>Rennzeit in Sekunden (wie 9,5), zu der Bahn %1 die Runde beendet hat:</translation>
    </message>
    <message>
        <source>No lap of this lane can be at %1</source>
        <translation>Keine Runde dieser Bahn kann bei %1 liegen</translation>
    </message>
    <message>
        <source>Move Cut</source>
        <translation>Cut versetzen</translation>
    </message>
    <message>
        <source>The pylon at which it was (1, 2 or 3):</source>
        <translation>Der Pylon, an dem er war (1, 2 oder 3):</translation>
    </message>
    <message>
        <source>There is no pylon %1</source>
        <translation>Es gibt keinen Pylon %1</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>Schl&amp;ießen</translation>
    </message>
    <message>
        <source>Close Quorvane</source>
        <translation>Quorvane beenden</translation>
    </message>
    <message>
        <source>Shutdown Quorvane. Are you sure?</source>
        <translation>Quorvane wirklich beenden?</translation>
    </message>
    <message>
        <source>Do you want to save the race first?</source>
        <translation>Soll das Rennen vorher gespeichert werden?</translation>
    </message>
    <message>
        <source>A race is being flown. It can be recovered when Quorvane starts again.</source>
        <translation>Es wird ein Rennen geflogen. Es kann wiederhergestellt werden, wenn Quorvane wieder startet.</translation>
    </message>
    <message>
        <source>The race that is being amended stays as it was saved.</source>
        <translation>Das Rennen, das gerade berichtigt wird, bleibt, wie es gespeichert war.</translation>
    </message>
    <message>
        <source>What was recorded since the last save that worked is lost when Quorvane closes.</source>
        <translation>Was seit dem letzten gelungenen Speichern erfasst wurde, geht verloren, wenn Quorvane beendet wird.</translation>
    </message>
    <message>
        <source>Reset Race</source>
        <translation>Rennen zurücksetzen</translation>
    </message>
    <message>
        <source>The race is still active.</source>
        <translation>Das Rennen läuft noch.</translation>
    </message>
    <message>
        <source>Do you want to save?</source>
        <translation>Soll es gespeichert werden?</translation>
    </message>
    <message>
        <source>Recover Race</source>
        <translation>Rennen wiederherstellen</translation>
    </message>
    <message>
        <source>Recover this race?</source>
        <translation>Dieses Rennen wiederherstellen?</translation>
    </message>
    <message>
        <source>%1, heat %2, round %3, %4</source>
        <translation>%1, Lauf %2, Durchgang %3, %4</translation>
    </message>
    <message>
        <source>%1 laps on lane %2, %3</source>
        <translation>%1 Runden auf Bahn %2, %3</translation>
    </message>
    <message>
        <source>%1 lap on lane %2, %3</source>
        <translation>%1 Runde auf Bahn %2, %3</translation>
    </message>
    <message>
        <source>%1 days ago</source>
        <translation>vor %1 Tagen</translation>
    </message>
    <message>
        <source>%1 day ago</source>
        <translation>vor %1 Tag</translation>
    </message>
    <message>
        <source>%1 hours ago</source>
        <translation>vor %1 Stunden</translation>
    </message>
    <message>
        <source>%1 hour ago</source>
        <translation>vor %1 Stunde</translation>
    </message>
    <message>
        <source>%1 minutes ago</source>
        <translation>vor %1 Minuten</translation>
    </message>
    <message>
        <source>%1 minute ago</source>
        <translation>vor %1 Minute</translation>
    </message>
    <message>
        <source>%1 seconds ago</source>
        <translation>vor %1 Sekunden</translation>
    </message>
    <message>
        <source>%1 second ago</source>
        <translation>vor %1 Sekunde</translation>
    </message>
    <message>
        <source>some time ago</source>
        <translation>vor einiger Zeit</translation>
    </message>
    <message>
        <source>just now</source>
        <translation>gerade eben</translation>
    </message>
    <message>
        <source>Amend Race</source>
        <translation>Rennen berichtigen</translation>
    </message>
    <message>
        <source>The race is amended. Print its heat report again?</source>
        <translation>Das Rennen ist berichtigt. Soll sein Laufbericht noch einmal gedruckt werden?</translation>
    </message>
    <message>
        <source>Heats per Round</source>
        <translation>Läufe je Durchgang</translation>
    </message>
    <message>
        <source>Enter the number of heats per round:</source>
        <translation>Wie viele Läufe hat ein Durchgang?</translation>
    </message>
    <message>
        <source>Enter the Event Name:</source>
        <translation>Wie heißt die Veranstaltung?</translation>
    </message>
    <message>
        <source>Enter the lane color assignments (1-%1) :</source>
        <translation>Welche Farben haben die Bahnen (1-%1)?</translation>
    </message>
    <message>
        <source>Current assignment (%1)</source>
        <translation>Jetzige Zuordnung (%1)</translation>
    </message>
    <message>
        <source>Choices are:</source>
        <translation>Zur Wahl stehen:</translation>
    </message>
    <message>
        <source>%1 - %2</source>
        <translation>%1 - %2</translation>
    </message>
    <message>
        <source>Save Heat Report as PDF</source>
        <translation>Laufbericht als PDF speichern</translation>
    </message>
    <message>
        <source>Open Project</source>
        <translation>Projekt öffnen</translation>
    </message>
    <message>
        <source>Open previous project? ()</source>
        <translation>Voriges Projekt öffnen? ()</translation>
    </message>
    <message>
        <source>Open previous project? (%1)</source>
        <translation>Voriges Projekt öffnen? (%1)</translation>
    </message>
    <message>
        <source>Open Existing Quorvane Project</source>
        <translation>Vorhandenes Quorvane-Projekt öffnen</translation>
    </message>
    <message>
        <source>Open New Quorvane Project</source>
        <translation>Neues Quorvane-Projekt anlegen</translation>
    </message>
    <message>
        <source>This folder is not there and cannot be made:</source>
        <translation>Diesen Ordner gibt es nicht, und er lässt sich nicht anlegen:</translation>
    </message>
    <message>
        <source>Choose another place.</source>
        <translation>Bitte einen anderen Ort wählen.</translation>
    </message>
    <message>
        <source>This project is open in another console:</source>
        <translation>Dieses Projekt ist in einer anderen Konsole offen:</translation>
    </message>
    <message>
        <source>Choose another file, or close that console.</source>
        <translation>Bitte eine andere Datei wählen oder jene Konsole schließen.</translation>
    </message>
    <message>
        <source>This file is no project:</source>
        <translation>Diese Datei ist kein Projekt:</translation>
    </message>
    <message>
        <source>It stays as it is. Choose another file.</source>
        <translation>Sie bleibt, wie sie ist. Bitte eine andere Datei wählen.</translation>
    </message>
    <message>
        <source>Choose another file.</source>
        <translation>Bitte eine andere Datei wählen.</translation>
    </message>
    <message>
        <source>PDF files (*.pdf)</source>
        <translation>PDF-Dateien (*.pdf)</translation>
    </message>
    <message>
        <source>Quorvane projects (*.ini)</source>
        <translation>Quorvane-Projekte (*.ini)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>it is a project file</source>
        <translation>sie ist eine Projektdatei</translation>
    </message>
    <message>
        <source>it is a settings file</source>
        <translation>sie ist eine Einstellungsdatei</translation>
    </message>
    <message>
        <source>it keeps a race</source>
        <translation>sie bewahrt ein Rennen auf</translation>
    </message>
    <message>
        <source>it is a session journal</source>
        <translation>sie ist ein Sitzungsjournal</translation>
    </message>
    <message>
        <source>it is a file of another kind</source>
        <translation>sie ist eine Datei anderer Art</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>sie ist keine Datei</translation>
    </message>
    <message>
        <source>it cannot be looked at</source>
        <translation>sie lässt sich nicht ansehen</translation>
    </message>
    <message>
        <source>it is a file in use</source>
        <translation>sie wird gerade benutzt</translation>
    </message>
    <message>
        <source>Station Link</source>
        <translation>Stationen</translation>
    </message>
    <message>
        <source>Serial port of the radio modem</source>
        <translation>Serielle Schnittstelle des Funkmodems</translation>
    </message>
    <message>
        <source>Message line</source>
        <translation>Meldungszeile</translation>
    </message>
    <message>
        <source>Stations</source>
        <translation>Stationen</translation>
    </message>
    <message>
        <source>Columns</source>
        <translation>Spalten</translation>
    </message>
    <message>
        <source>Stn ----  Age Volt Tmp</source>
        <translation>Stn ----  Sek Volt Tmp</translation>
    </message>
    <message>
        <source>System Controller</source>
        <translation>Diese Konsole steuert</translation>
    </message>
    <message>
        <source>&amp;System Controller</source>
        <translation>Diese Konsole &amp;steuert</translation>
    </message>
    <message>
        <source>Listen Only (Debug Monitor)</source>
        <translation>Nur mithören (zur Fehlersuche)</translation>
    </message>
    <message>
        <source>&amp;Listen Only (Debug Monitor)</source>
        <translation>Nur mit&amp;hören (zur Fehlersuche)</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>&amp;Hide</source>
        <translation>&amp;Ausblenden</translation>
    </message>
    <message>
        <source>Message detail</source>
        <translation>Nachricht im Einzelnen</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Nachricht</translation>
    </message>
    <message>
        <source>Msg</source>
        <translation>Nachricht</translation>
    </message>
    <message>
        <source>Msg (%1 -&gt; %2)%3</source>
        <translation>Nachricht (%1 -&gt; %2)%3</translation>
    </message>
    <message>
        <source>Msg (%1 -&gt; %2)</source>
        <translation>Nachricht (%1 -&gt; %2)</translation>
    </message>
    <message>
        <source>Thaw</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Copy message</source>
        <translation>Nachricht kopieren</translation>
    </message>
    <message>
        <source>Counters</source>
        <translation>Zähler</translation>
    </message>
    <message>
        <source>Counters since start</source>
        <translation>Zähler seit dem Start</translation>
    </message>
    <message>
        <source>Copy counters</source>
        <translation>Zähler kopieren</translation>
    </message>
    <message>
        <source>Since start</source>
        <translation>Seit dem Start</translation>
    </message>
    <message>
        <source>Silent</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Judges 1</source>
        <translation>Richter 1</translation>
    </message>
    <message>
        <source>Judges 2</source>
        <translation>Richter 2</translation>
    </message>
    <message>
        <source>Judges 3</source>
        <translation>Richter 3</translation>
    </message>
    <message>
        <source>Starter</source>
        <translation>Starter</translation>
    </message>
    <message>
        <source>Timers</source>
        <translation>Zeitnahme</translation>
    </message>
    <message>
        <source>Pylon 1</source>
        <translation>Pylon 1</translation>
    </message>
    <message>
        <source>Display</source>
        <translation>Anzeige</translation>
    </message>
    <message>
        <source>Laptop</source>
        <translation>Laptop</translation>
    </message>
    <message>
        <source>Station %1</source>
        <translation>Station %1</translation>
    </message>
    <message>
        <source>No station</source>
        <translation>Keine Station</translation>
    </message>
    <message>
        <source>Age of station %1</source>
        <translation>Alter von Station %1</translation>
    </message>
    <message>
        <source>Volts of station %1</source>
        <translation>Volt von Station %1</translation>
    </message>
    <message>
        <source>Temperature of station %1</source>
        <translation>Temperatur von Station %1</translation>
    </message>
    <message>
        <source>RADIO SILENT</source>
        <translation>FUNKSTILLE</translation>
    </message>
    <message>
        <source>All %1 stations here</source>
        <translation>Alle %1 Stationen da</translation>
    </message>
    <message>
        <source>%1 of %2 stations so far</source>
        <translation>%1 von %2 Stationen bisher</translation>
    </message>
    <message>
        <source>No station heard</source>
        <translation>Keine Station gehört</translation>
    </message>
    <message>
        <source>%1, battery low: %2</source>
        <translation>%1, Akku schwach: %2</translation>
    </message>
    <message>
        <source>Missing: %1</source>
        <translation>Es fehlen: %1</translation>
    </message>
    <message>
        <source>Silent: %1, never: %2</source>
        <translation>Stumm: %1, nie: %2</translation>
    </message>
    <message>
        <source>Silent: %1</source>
        <translation>Stumm: %1</translation>
    </message>
    <message>
        <source>Never heard: %1</source>
        <translation>Nie gehört: %1</translation>
    </message>
    <message>
        <source>%1 - Off</source>
        <translation>%1 - Aus</translation>
    </message>
    <message>
        <source>%1 is not there. It opens when it is plugged in.</source>
        <translation>%1 ist nicht da. Die Schnittstelle öffnet, sobald sie eingesteckt wird.</translation>
    </message>
    <message>
        <source>%1 is not there</source>
        <translation>%1 ist nicht da</translation>
    </message>
    <message>
        <source>%1: no permission</source>
        <translation>%1: kein Zugriffsrecht</translation>
    </message>
    <message>
        <source>%1 is in use</source>
        <translation>%1 ist belegt</translation>
    </message>
    <message>
        <source>%1: stale lock</source>
        <translation>%1: alte Sperre</translation>
    </message>
    <message>
        <source>%1 does not open. %2</source>
        <translation>%1 lässt sich nicht öffnen. %2</translation>
    </message>
    <message>
        <source>%1 does not open</source>
        <translation>%1 öffnet nicht</translation>
    </message>
    <message>
        <source>Open Serial Comm</source>
        <translation>Serielle Schnittstelle öffnen</translation>
    </message>
    <message>
        <source>Can't open %1.</source>
        <translation>%1 lässt sich nicht öffnen.</translation>
    </message>
    <message>
        <source>Reason: (%1) %2</source>
        <translation>Grund: (%1) %2</translation>
    </message>
    <message>
        <source>Check the connection to the Maxstream modem.</source>
        <translation>Bitte die Verbindung zum Maxstream-Modem prüfen.</translation>
    </message>
    <message>
        <source>( If a race was active when the modem was</source>
        <translation>(War ein Rennen im Gange, als das Modem</translation>
    </message>
    <message>
        <source>turned on, it will cause the port to be locked. )</source>
        <translation>eingeschaltet wurde, ist die Schnittstelle gesperrt.)</translation>
    </message>
    <message>
        <source>Enabling CONTROLLER mode</source>
        <translation>Steuerung einschalten</translation>
    </message>
    <message>
        <source>Do you want to CONTROL the race equipment
from this computer</source>
        <translation>Soll dieser Computer die Geräte
des Rennens STEUERN?</translation>
    </message>
    <message>
        <source>Do you want to CONTROL the race equipment</source>
        <translation>Soll die Geräte des Rennens</translation>
    </message>
    <message>
        <source>from this computer</source>
        <translation>dieser Computer STEUERN?</translation>
    </message>
    <message>
        <source>Confirm that you really want to do this.</source>
        <translation>Bitte bestätigen, dass das wirklich gewollt ist.</translation>
    </message>
    <message>
        <source>Cancel CONTROLLER mode</source>
        <translation>Steuerung ausschalten</translation>
    </message>
    <message>
        <source>CONTROLLER mode is cancelled</source>
        <translation>Die Steuerung ist ausgeschaltet,</translation>
    </message>
    <message>
        <source>because the STARTER was detected</source>
        <translation>weil der STARTER gehört wurde</translation>
    </message>
    <message>
        <source>%1 -&gt; %2, Ecc Error 0x%3, 0x%4</source>
        <translation>%1 -&gt; %2, Prüfsumme falsch 0x%3, 0x%4</translation>
    </message>
    <message>
        <source>Unexpected error #%1</source>
        <translation>Unerwarteter Fehler #%1</translation>
    </message>
    <message>
        <source>Unexpected 0x%1, 0x%2</source>
        <translation>Unerwartet 0x%1, 0x%2</translation>
    </message>
    <message>
        <source>A Break signal was received</source>
        <translation>Ein Break-Signal wurde empfangen</translation>
    </message>
    <message>
        <source>Framing Error. The hardware detected a framing error.</source>
        <translation>Rahmenfehler. Die Hardware hat einen Rahmenfehler gemeldet.</translation>
    </message>
    <message>
        <source>Port Overrun. A character was not read from the hardware before the next character arrived and was lost.</source>
        <translation>Überlauf der Schnittstelle. Ein Zeichen wurde nicht gelesen, bevor das nächste kam, und ging verloren.</translation>
    </message>
    <message>
        <source>Receive Buffer Overflow. There is no room in the receive buffer.</source>
        <translation>Empfangspuffer voll. Im Empfangspuffer ist kein Platz.</translation>
    </message>
    <message>
        <source>Parity Error. The hardware detected a parity error.</source>
        <translation>Paritätsfehler. Die Hardware hat einen Paritätsfehler gemeldet.</translation>
    </message>
    <message>
        <source>Transmit Buffer Full. The transmit buffer was full while trying to queue a character.</source>
        <translation>Sendepuffer voll. Der Sendepuffer war voll, als ein Zeichen hinein sollte.</translation>
    </message>
    <message>
        <source>Unexpected error retrieving Device Control Block (DCB) for the port.</source>
        <translation>Unerwarteter Fehler beim Lesen des Steuerblocks (DCB) der Schnittstelle.</translation>
    </message>
    <message>
        <source>Invalid port number</source>
        <translation>Ungültige Nummer einer Schnittstelle</translation>
    </message>
    <message>
        <source>Another program is using %1.</source>
        <translation>Ein anderes Programm benutzt %1.</translation>
    </message>
    <message>
        <source>There is no such port.</source>
        <translation>Diese Schnittstelle gibt es nicht.</translation>
    </message>
    <message>
        <source>Permission denied. As administrator: %1 USER, and log in again.</source>
        <translation>Zugriff verweigert. Als Administrator: %1 BENUTZER, danach neu anmelden.</translation>
    </message>
    <message>
        <source>Permission denied. As administrator: %1</source>
        <translation>Zugriff verweigert. Als Administrator: %1</translation>
    </message>
    <message>
        <source>A program that has ended left a lock behind. As administrator: rm %1</source>
        <translation>Ein beendetes Programm hat eine Sperre hinterlassen. Als Administrator: rm %1</translation>
    </message>
    <message>
        <source>Good frames: %1, %2 per second</source>
        <translation>Gute Telegramme: %1, %2 je Sekunde</translation>
    </message>
    <message>
        <source>Damaged frames</source>
        <translation>Gestörte Telegramme</translation>
    </message>
    <message>
        <source>Bytes skipped</source>
        <translation>Übergangene Bytes</translation>
    </message>
    <message>
        <source>Line errors: %1</source>
        <translation>Leitungsfehler: %1</translation>
    </message>
    <message>
        <source>Frames sent</source>
        <translation>Gesendete Telegramme</translation>
    </message>
    <message>
        <source>Station: frames, longest silence</source>
        <translation>Station: Telegramme, längste Stille</translation>
    </message>
    <message>
        <source>%1: %2, %3 s</source>
        <translation>%1: %2, %3 s</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>About Quorvane</source>
        <translation>Über Quorvane</translation>
    </message>
    <message>
        <source>Quorvane</source>
        <translation>Quorvane</translation>
    </message>
    <message>
        <source>Quorvane - %1 (%2) -</source>
        <translation>Quorvane - %1 (%2) -</translation>
    </message>
    <message>
        <source>Race control for model-aircraft pylon racing</source>
        <translation>Rennleitung für das Pylonrennen mit Modellflugzeugen</translation>
    </message>
    <message>
        <source>Written by the Quorvane developers, with thanks to the race directors, starters, timers and pylon judges who stand in the sun.</source>
        <translation>Geschrieben von den Quorvane-Entwicklern, mit Dank an die Wettbewerbsleiter, Starter, Zeitnehmer und Wenderichter, die in der Sonne stehen.</translation>
    </message>
    <message>
        <source>Version %1, %2</source>
        <translation>Version %1, %2</translation>
    </message>
    <message>
        <source>Built with %1 and %2</source>
        <translation>Gebaut mit %1 und %2</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Cut at pylon %1</source>
        <translation>Cut an Pylon %1</translation>
    </message>
    <message>
        <source>Key of lane %1</source>
        <translation>Taste von Bahn %1</translation>
    </message>
    <message>
        <source>F1 starts the race while it waits for its start.</source>
        <translation>F1 startet das Rennen, solange es auf den Start wartet.</translation>
    </message>
    <message>
        <source>After the finish no key enters anything until the race is saved.</source>
        <translation>Nach dem Ziel trägt keine Taste etwas ein, bis das Rennen gespeichert ist.</translation>
    </message>
    <message>
        <source>7, 8, 9 and 0 judge cuts unless you are typing (Esc ends that); the function keys always act.</source>
        <translation>7, 8, 9 und 0 geben Cuts, außer beim Tippen (Esc beendet das); die Funktionstasten wirken immer.</translation>
    </message>
    <message>
        <source>Alt with the underlined letter of a button or menu presses it. Tab goes from one to the next.</source>
        <translation>Alt mit dem unterstrichenen Buchstaben drückt den Knopf oder öffnet das Menü. Tab geht zum nächsten.</translation>
    </message>
    <message>
        <source>In the print preview the arrows, Page Up and Page Down scroll.</source>
        <translation>In der Druckvorschau blättern die Pfeiltasten, Bild auf und Bild ab.</translation>
    </message>
    <message>
        <source>ccrpTMR settings</source>
        <translation>Zeitmessung</translation>
    </message>
    <message>
        <source>Stopwatch resolution</source>
        <translation>Auflösung der Stoppuhr</translation>
    </message>
    <message>
        <source>Stopwatch frequency</source>
        <translation>Frequenz der Stoppuhr</translation>
    </message>
    <message>
        <source>Resolution</source>
        <translation>Auflösung</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Display timer</source>
        <translation>Anzeigetakt</translation>
    </message>
    <message>
        <source>%1 ns</source>
        <translation>%1 ns</translation>
    </message>
    <message>
        <source>%1 µs</source>
        <translation>%1 µs</translation>
    </message>
    <message>
        <source>%1 ms</source>
        <translation>%1 ms</translation>
    </message>
    <message>
        <source>%1 kHz</source>
        <translation>%1 kHz</translation>
    </message>
    <message>
        <source>%1 MHz</source>
        <translation>%1 MHz</translation>
    </message>
    <message>
        <source>How finely the clock on the screen is timed. A coarser setting spares a slow computer; race times stay the same.</source>
        <translation>Wie fein die Uhr auf dem Bildschirm läuft. Eine gröbere Stufe schont einen langsamen Computer; die Rennzeiten bleiben dieselben.</translation>
    </message>
    <message>
        <source>Print Preview</source>
        <translation>Druckvorschau</translation>
    </message>
    <message>
        <source>Protest Sheet</source>
        <translation>Protestblatt</translation>
    </message>
    <message>
        <source>&amp;Large</source>
        <translation>&amp;Groß</translation>
    </message>
    <message>
        <source>&amp;Medium</source>
        <translation>&amp;Mittel</translation>
    </message>
    <message>
        <source>&amp;Small</source>
        <translation>&amp;Klein</translation>
    </message>
    <message>
        <source>&amp;Scale</source>
        <translation>&amp;Maßstab</translation>
    </message>
    <message>
        <source>&amp;Contents...</source>
        <translation>&amp;Inhalt ...</translation>
    </message>
    <message>
        <source>&amp;Search...</source>
        <translation>&amp;Suchen ...</translation>
    </message>
    <message>
        <source>&amp;About Print Preview...</source>
        <translation>Ü&amp;ber die Druckvorschau ...</translation>
    </message>
    <message>
        <source>race %1</source>
        <translation>Rennen %1</translation>
    </message>
    <message>
        <source>%1 refly</source>
        <translation>%1 Neuflug</translation>
    </message>
    <message>
        <source>%1 (protest sheet)</source>
        <translation>%1 (Protestblatt)</translation>
    </message>
    <message>
        <source>%1 sent to %2</source>
        <translation>%1 an %2 geschickt</translation>
    </message>
    <message>
        <source>Printing %1 ...</source>
        <translation>%1 wird gedruckt ...</translation>
    </message>
    <message>
        <source>Saving the PDF of %1 ...</source>
        <translation>PDF von %1 wird gespeichert ...</translation>
    </message>
    <message>
        <source>PDF saved: %1</source>
        <translation>PDF gespeichert: %1</translation>
    </message>
    <message>
        <source>PDF not saved: %1</source>
        <translation>PDF nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>the pages cannot be written</source>
        <translation>die Seiten lassen sich nicht schreiben</translation>
    </message>
    <message>
        <source>The print server does not answer: %1 may not be printed</source>
        <translation>Der Druckserver antwortet nicht: %1 ist vielleicht nicht gedruckt</translation>
    </message>
    <message>
        <source>The disk does not answer: %1 may not be saved</source>
        <translation>Die Platte antwortet nicht: %1 ist vielleicht nicht gespeichert</translation>
    </message>
    <message>
        <source>No printer (File &gt; Save as PDF needs none): %1 not printed</source>
        <translation>Kein Drucker (Datei &gt; Als PDF speichern braucht keinen): %1 nicht gedruckt</translation>
    </message>
    <message>
        <source>No printer %1: %2 not printed</source>
        <translation>Kein Drucker %1: %2 nicht gedruckt</translation>
    </message>
    <message>
        <source>Printer trouble: %1 not printed</source>
        <translation>Störung am Drucker: %1 nicht gedruckt</translation>
    </message>
    <message>
        <source>%1 refuses jobs: %2 not printed</source>
        <translation>%1 nimmt keine Aufträge an: %2 nicht gedruckt</translation>
    </message>
    <message>
        <source>%1 took no job (%2): %3 not printed</source>
        <translation>%1 hat den Auftrag nicht angenommen (%2): %3 nicht gedruckt</translation>
    </message>
    <message>
        <source>%1 is paused: %2 waits there</source>
        <translation>%1 ist angehalten: %2 wartet dort</translation>
    </message>
    <message>
        <source>Looking for printers ...</source>
        <translation>Suche nach Druckern ...</translation>
    </message>
    <message>
        <source>Printer Setup</source>
        <translation>Drucker einrichten</translation>
    </message>
    <message>
        <source>Default printer (%1)</source>
        <translation>Standarddrucker (%1)</translation>
    </message>
    <message>
        <source>none now</source>
        <translation>zurzeit keiner</translation>
    </message>
    <message>
        <source>%1 (not found now)</source>
        <translation>%1 (zurzeit nicht gefunden)</translation>
    </message>
    <message>
        <source>&amp;Printer</source>
        <translation>&amp;Drucker</translation>
    </message>
    <message>
        <source>P&amp;aper</source>
        <translation>&amp;Papier</translation>
    </message>
    <message>
        <source>This computer has no printer now.</source>
        <translation>Dieser Computer hat zurzeit keinen Drucker.</translation>
    </message>
    <message>
        <source>A report is still on its way. Quorvane closes soon, with or without it.</source>
        <translation>Ein Bericht ist noch unterwegs. Quorvane schließt bald, mit ihm oder ohne ihn.</translation>
    </message>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Platz</translation>
    </message>
    <message>
        <source>Laps</source>
        <translation>Runden</translation>
    </message>
    <message>
        <source>Cuts</source>
        <translation>Cuts</translation>
    </message>
    <message>
        <source>Fastest Lap</source>
        <translation>Schnellste Runde</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Anmerkung</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Save As...</source>
        <translation>&amp;Speichern unter ...</translation>
    </message>
    <message>
        <source>Save Results</source>
        <translation>Ergebnisse speichern</translation>
    </message>
    <message>
        <source>Web page (*.html)</source>
        <translation>Webseite (*.html)</translation>
    </message>
    <message>
        <source>Spreadsheet (*.csv)</source>
        <translation>Tabelle (*.csv)</translation>
    </message>
    <message>
        <source>Text (*.txt)</source>
        <translation>Text (*.txt)</translation>
    </message>
    <message>
        <source>JSON (*.json)</source>
        <translation>JSON (*.json)</translation>
    </message>
    <message>
        <source>no race has been flown</source>
        <translation>es ist kein Rennen geflogen worden</translation>
    </message>
    <message>
        <source>does not count</source>
        <translation>zählt nicht</translation>
    </message>
    <message>
        <source>reflown by Refly %1</source>
        <translation>neu geflogen als Neuflug %1</translation>
    </message>
    <message>
        <source>Recovered: %1</source>
        <translation>Wiederhergestellt: %1</translation>
    </message>
    <message>
        <source>Radio gap: %1</source>
        <translation>Funklücke: %1</translation>
    </message>
    <message>
        <source>%1 %2 s</source>
        <translation>%1 %2 s</translation>
    </message>
    <message>
        <source>Amended %1</source>
        <translation>Berichtigt: %1</translation>
    </message>
    <message>
        <source>Corrected %1</source>
        <translation>Korrigiert: %1</translation>
    </message>
    <message>
        <source>once</source>
        <translation>einmal</translation>
    </message>
    <message>
        <source>%1 times</source>
        <translation>%1-mal</translation>
    </message>
    <message>
        <source>%1; %2</source>
        <translation>%1; %2</translation>
    </message>
    <message>
        <source>after its end</source>
        <translation>nach seinem Ende</translation>
    </message>
    <message>
        <source>%1 s not judged</source>
        <translation>%1 s nicht gewertet</translation>
    </message>
    <message>
        <source>stopped at %1</source>
        <translation>angehalten bei %1</translation>
    </message>
    <message>
        <source>%1 rows copied</source>
        <translation>%1 Zeilen kopiert</translation>
    </message>
    <message>
        <source>Saved as %1</source>
        <translation>Gespeichert als %1</translation>
    </message>
    <message>
        <source>Scoreboard</source>
        <translation>Anzeigetafel</translation>
    </message>
    <message>
        <source>Screen</source>
        <translation>Bildschirm</translation>
    </message>
    <message>
        <source>Full Screen</source>
        <translation>Vollbild</translation>
    </message>
    <message>
        <source>Esc or a double click: back to a window</source>
        <translation>Esc oder Doppelklick: zurück zum Fenster</translation>
    </message>
    <message>
        <source>Round %1  Heat %2  Refly</source>
        <translation>Durchgang %1  Lauf %2  Neuflug</translation>
    </message>
    <message>
        <source>Round %1  Heat %2</source>
        <translation>Durchgang %1  Lauf %2</translation>
    </message>
    <message>
        <source>1st</source>
        <translation>1.</translation>
    </message>
    <message>
        <source>2nd</source>
        <translation>2.</translation>
    </message>
    <message>
        <source>3rd</source>
        <translation>3.</translation>
    </message>
    <message>
        <source>4th</source>
        <translation>4.</translation>
    </message>
    <message>
        <source>Practice Field...</source>
        <translation>Übungsfeld ...</translation>
    </message>
    <message>
        <source>&amp;Practice Field...</source>
        <translation>Ü&amp;bungsfeld ...</translation>
    </message>
    <message>
        <source>End the practice first</source>
        <translation>Erst die Übung beenden</translation>
    </message>
    <message>
        <source>Name a file.</source>
        <translation>Eine Datei angeben.</translation>
    </message>
    <message>
        <source>This is a folder. Name a file in it.</source>
        <translation>Das ist ein Ordner. Eine Datei darin angeben.</translation>
    </message>
    <message>
        <source>This file is no project. It stays as it is: choose another one.</source>
        <translation>Diese Datei ist kein Projekt. Sie bleibt, wie sie ist: eine andere wählen.</translation>
    </message>
    <message>
        <source>No other project was opened before</source>
        <translation>Vorher wurde kein anderes Projekt geöffnet</translation>
    </message>
    <message>
        <source>A race is being flown: wait for its end, or end the practice</source>
        <translation>Ein Rennen wird geflogen: das Ende abwarten oder die Übung beenden</translation>
    </message>
    <message>
        <source>A race is being flown. The practice race is thrown away, and the contest is opened again:</source>
        <translation>Ein Rennen wird geflogen. Das Übungsrennen wird verworfen und der Wettbewerb wieder geöffnet:</translation>
    </message>
    <message>
        <source>End practice?</source>
        <translation>Übung beenden?</translation>
    </message>
    <message>
        <source>A race is being flown: wait for its end, or reset it</source>
        <translation>Ein Rennen wird geflogen: das Ende abwarten oder abbrechen</translation>
    </message>
    <message>
        <source>A race is not saved: save it first</source>
        <translation>Ein Rennen ist nicht gespeichert: erst speichern</translation>
    </message>
    <message>
        <source>A saved race is being amended: save it first</source>
        <translation>Ein gespeichertes Rennen wird berichtigt: erst speichern</translation>
    </message>
    <message>
        <source>System Controller is on: switch it off first, the field has a starter of its own</source>
        <translation>„Diese Konsole steuert“ ist an: erst ausschalten, das Feld hat einen eigenen Starter</translation>
    </message>
    <message>
        <source>Practice Field</source>
        <translation>Übungsfeld</translation>
    </message>
    <message>
        <source>What is flown in practice goes into a project of its own. This contest stays as it is, and is opened again at the end of practice:</source>
        <translation>Was in der Übung geflogen wird, kommt in ein eigenes Projekt. Dieser Wettbewerb bleibt, wie er ist, und wird am Ende der Übung wieder geöffnet:</translation>
    </message>
    <message>
        <source>Start practice?</source>
        <translation>Mit der Übung beginnen?</translation>
    </message>
    <message>
        <source>Practice was not started. %1</source>
        <translation>Die Übung hat nicht begonnen. %1</translation>
    </message>
    <message>
        <source>The field was stopped, but the contest is not open</source>
        <translation>Das Feld ist beendet, aber der Wettbewerb ist nicht geöffnet</translation>
    </message>
    <message>
        <source>Practice field: %1</source>
        <translation>Übungsfeld: %1</translation>
    </message>
    <message>
        <source>One after another</source>
        <translation>Eine nach der anderen</translation>
    </message>
    <message>
        <source>There is no practice to end</source>
        <translation>Es gibt keine Übung zu beenden</translation>
    </message>
    <message>
        <source>Start Again</source>
        <translation>Neu beginnen</translation>
    </message>
    <message>
        <source>&amp;Start Again</source>
        <translation>Neu &amp;beginnen</translation>
    </message>
    <message>
        <source>Start Practice</source>
        <translation>Übung beginnen</translation>
    </message>
    <message>
        <source>&amp;Start Practice</source>
        <translation>Übung &amp;beginnen</translation>
    </message>
    <message>
        <source>End Practice</source>
        <translation>Übung beenden</translation>
    </message>
    <message>
        <source>PRACTICE is on. Its races go into a project of its own.</source>
        <translation>ÜBUNG läuft. Ihre Rennen kommen in ein eigenes Projekt.</translation>
    </message>
    <message>
        <source>Plays all stations of a field: no radio is needed.</source>
        <translation>Spielt alle Stationen eines Feldes: kein Funk nötig.</translation>
    </message>
    <message>
        <source>Judge 2 falls silent</source>
        <translation>Richter 2 verstummt</translation>
    </message>
    <message>
        <source>&amp;Judge 2 falls silent</source>
        <translation>Ri&amp;chter 2 verstummt</translation>
    </message>
    <message>
        <source>The starter restarts in the first heat</source>
        <translation>Der Starter startet im ersten Lauf neu</translation>
    </message>
    <message>
        <source>The lap timers are lost</source>
        <translation>Die Zeitnahme fällt aus</translation>
    </message>
    <message>
        <source>Not a contest</source>
        <translation>Kein Wettbewerb</translation>
    </message>
    <message>
        <source>Quorvane First Start</source>
        <translation>Quorvane: Erster Start</translation>
    </message>
    <message>
        <source>Four answers, and the first heat can be flown. All can be changed later.</source>
        <translation>Vier Antworten, und der erste Lauf kann fliegen. Alles lässt sich später ändern.</translation>
    </message>
    <message>
        <source>for example: Autumn Cup</source>
        <translation>zum Beispiel: Herbstpokal</translation>
    </message>
    <message>
        <source>Stands on every report.</source>
        <translation>Steht auf jedem Bericht.</translation>
    </message>
    <message>
        <source>&amp;Heats per round</source>
        <translation>&amp;Läufe je Durchgang</translation>
    </message>
    <message>
        <source>How many heats until everybody has flown once. From 2: with 1 the program takes it as not told yet.</source>
        <translation>Wie viele Läufe, bis jeder einmal geflogen ist. Ab 2: bei 1 gilt es als noch nicht gesagt.</translation>
    </message>
    <message>
        <source>&amp;Project file</source>
        <translation>&amp;Projektdatei</translation>
    </message>
    <message>
        <source>Project file</source>
        <translation>Projektdatei</translation>
    </message>
    <message>
        <source>Where the radio modem is plugged in. Practice needs none: the stations are simulated.</source>
        <translation>Wo das Funkmodem steckt. Die Übung braucht keines: die Stationen sind simuliert.</translation>
    </message>
    <message>
        <source>The program asks one by one instead</source>
        <translation>Das Programm fragt stattdessen eins nach dem anderen</translation>
    </message>
    <message>
        <source>Manual</source>
        <translation>Handbuch</translation>
    </message>
    <message>
        <source>&amp;Manual (Ctrl+F1)</source>
        <translation>&amp;Handbuch (Strg+F1)</translation>
    </message>
    <message>
        <source>The first contest, step by step</source>
        <translation>Der erste Wettbewerb, Schritt für Schritt</translation>
    </message>
    <message>
        <source>No radio, judged by hand</source>
        <translation>Kein Funk, von Hand gewertet</translation>
    </message>
    <message>
        <source>Practice field, simulated</source>
        <translation>Übungsfeld, simuliert</translation>
    </message>
    <message>
        <source>A new file.</source>
        <translation>Eine neue Datei.</translation>
    </message>
    <message>
        <source>This project exists: it is opened as it is, and nothing in it is written over.</source>
        <translation>Dieses Projekt gibt es schon: es wird geöffnet, wie es ist, und nichts darin überschrieben.</translation>
    </message>
    <message>
        <source>Its event: %1</source>
        <translation>Seine Veranstaltung: %1</translation>
    </message>
    <message>
        <source>Another place, or a project that exists</source>
        <translation>Ein anderer Ort, oder ein Projekt, das es schon gibt</translation>
    </message>
    <message>
        <source>Name the event first</source>
        <translation>Erst die Veranstaltung benennen</translation>
    </message>
    <message>
        <source>The field does not answer</source>
        <translation>Das Feld antwortet nicht</translation>
    </message>
    <message>
        <source>%1 does not start</source>
        <translation>%1 startet nicht</translation>
    </message>
    <message>
        <source>The field has ended: %1</source>
        <translation>Das Feld ist zu Ende: %1</translation>
    </message>
    <message>
        <source>The field has ended</source>
        <translation>Das Feld ist zu Ende</translation>
    </message>
    <message>
        <source>&amp;Event</source>
        <translation>&amp;Veranstaltung</translation>
    </message>
    <message>
        <source>&amp;Radio</source>
        <translation>&amp;Funk</translation>
    </message>
    <message>
        <source>&amp;Start</source>
        <translation>&amp;Start</translation>
    </message>
    <message>
        <source>&amp;Choose...</source>
        <translation>&amp;Wählen ...</translation>
    </message>
    <message>
        <source>PRACTICE</source>
        <translation>ÜBUNG</translation>
    </message>
    <message>
        <source>Practice</source>
        <translation>Übung</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Gut</translation>
    </message>
    <message>
        <source>Noisy</source>
        <translation>Gestört</translation>
    </message>
    <message>
        <source>Bad</source>
        <translation>Schlecht</translation>
    </message>
    <message>
        <source>Race &amp;mode</source>
        <translation>Renn&amp;modus</translation>
    </message>
    <message>
        <source>Heats per round</source>
        <translation>Läufe je Durchgang</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Veranstaltung</translation>
    </message>
    <message>
        <source>Ne&amp;w Project...</source>
        <translation>&amp;Neues Projekt ...</translation>
    </message>
    <message>
        <source>Open Re&amp;cent</source>
        <translation>Zu&amp;letzt geöffnet</translation>
    </message>
    <message>
        <source>Sav&amp;e</source>
        <translation>Spei&amp;chern</translation>
    </message>
    <message>
        <source>Pr&amp;int</source>
        <translation>&amp;Drucken</translation>
    </message>
    <message>
        <source>Station Lin&amp;k</source>
        <translation>Stations&amp;verbindung</translation>
    </message>
    <message>
        <source>FINISHED, NOT SAVED YET</source>
        <translation>BEENDET, NOCH NICHT GESPEICHERT</translation>
    </message>
    <message>
        <source>Begin another contest in a file of its own</source>
        <translation>Einen anderen Wettbewerb in einer eigenen Datei beginnen</translation>
    </message>
    <message>
        <source>Go on with a contest that has a file already</source>
        <translation>Mit einem Wettbewerb weitermachen, der schon eine Datei hat</translation>
    </message>
    <message>
        <source>The contests that were opened last</source>
        <translation>Die zuletzt geöffneten Wettbewerbe</translation>
    </message>
    <message>
        <source>Write the finished race into the project and go on to the next one</source>
        <translation>Das beendete Rennen ins Projekt schreiben und zum nächsten gehen</translation>
    </message>
    <message>
        <source>Write the finished race into the project and go on to the next one (Ctrl+S)</source>
        <translation>Das beendete Rennen ins Projekt schreiben und zum nächsten gehen (Strg+S)</translation>
    </message>
    <message>
        <source>All races of the contest as a table, and as files</source>
        <translation>Alle Rennen des Wettbewerbs als Tabelle und als Dateien</translation>
    </message>
    <message>
        <source>The race in large type, for another screen</source>
        <translation>Das Rennen in großer Schrift, für einen anderen Bildschirm</translation>
    </message>
    <message>
        <source>Keep all that happens in a journal, which can be flown again</source>
        <translation>Alles, was geschieht, in einem Journal festhalten, das wieder geflogen werden kann</translation>
    </message>
    <message>
        <source>Print the heat report of the race on the console</source>
        <translation>Den Laufbericht des gezeigten Rennens drucken</translation>
    </message>
    <message>
        <source>Print the heat report of the race on the console (Ctrl+P)</source>
        <translation>Den Laufbericht des gezeigten Rennens drucken (Strg+P)</translation>
    </message>
    <message>
        <source>The heat report on the screen</source>
        <translation>Der Laufbericht auf dem Bildschirm</translation>
    </message>
    <message>
        <source>All that happened in the race on the console</source>
        <translation>Alles, was im gezeigten Rennen geschehen ist</translation>
    </message>
    <message>
        <source>The heat report as a file</source>
        <translation>Der Laufbericht als Datei</translation>
    </message>
    <message>
        <source>Which printer, which paper</source>
        <translation>Welcher Drucker, welches Papier</translation>
    </message>
    <message>
        <source>Print each heat that the starter ends</source>
        <translation>Jeden Lauf drucken, den der Starter beendet</translation>
    </message>
    <message>
        <source>End the program; it asks first</source>
        <translation>Das Programm beenden; es fragt vorher</translation>
    </message>
    <message>
        <source>Take the last entry by hand back</source>
        <translation>Den letzten Eintrag von Hand zurücknehmen</translation>
    </message>
    <message>
        <source>Make the entry that was taken back again</source>
        <translation>Den zurückgenommenen Eintrag wieder machen</translation>
    </message>
    <message>
        <source>The log of a lane, to strike, insert and move entries</source>
        <translation>Das Protokoll einer Bahn, um Einträge zu streichen, einzufügen und zu verschieben</translation>
    </message>
    <message>
        <source>Correct the saved race on the console</source>
        <translation>Das gezeigte gespeicherte Rennen berichtigen</translation>
    </message>
    <message>
        <source>Get back the race that was thrown away with Reset</source>
        <translation>Das mit Zurücksetzen verworfene Rennen zurückholen</translation>
    </message>
    <message>
        <source>The contest&apos;s name, on reports and in the title</source>
        <translation>Der Name des Wettbewerbs, auf Berichten und im Titel</translation>
    </message>
    <message>
        <source>How many heats make a round</source>
        <translation>Wie viele Läufe ein Durchgang hat</translation>
    </message>
    <message>
        <source>Which lane carries which marking</source>
        <translation>Welche Bahn welche Kennung trägt</translation>
    </message>
    <message>
        <source>How finely the clock on the screen is drawn</source>
        <translation>Wie fein die Uhr auf dem Bildschirm gezeichnet wird</translation>
    </message>
    <message>
        <source>The radio: its port, the stations, the messages</source>
        <translation>Der Funk: sein Anschluss, die Stationen, die Meldungen</translation>
    </message>
    <message>
        <source>The manual. Ctrl+F1 opens the page of the window in hand</source>
        <translation>Das Handbuch. Strg+F1 öffnet die Seite des jetzigen Fensters</translation>
    </message>
    <message>
        <source>The keys at a glance</source>
        <translation>Die Tasten auf einen Blick</translation>
    </message>
    <message>
        <source>Version, and what the program is built with</source>
        <translation>Version, und womit das Programm gebaut ist</translation>
    </message>
    <message>
        <source>The heat before</source>
        <translation>Der Lauf davor</translation>
    </message>
    <message>
        <source>The next heat</source>
        <translation>Der nächste Lauf</translation>
    </message>
    <message>
        <source>The same heat of the round before</source>
        <translation>Derselbe Lauf des vorigen Durchgangs</translation>
    </message>
    <message>
        <source>The same heat of the next round</source>
        <translation>Derselbe Lauf des nächsten Durchgangs</translation>
    </message>
    <message>
        <source>Fly this race again</source>
        <translation>Dieses Rennen noch einmal fliegen</translation>
    </message>
    <message>
        <source>Start a race by hand</source>
        <translation>Ein Rennen von Hand starten</translation>
    </message>
    <message>
        <source>End the race, or throw it away; a race by hand asks first</source>
        <translation>Das Rennen beenden oder verwerfen; ein Rennen von Hand fragt vorher</translation>
    </message>
    <message>
        <source>Give the places by hand, lane after lane</source>
        <translation>Die Plätze von Hand vergeben, Bahn für Bahn</translation>
    </message>
    <message>
        <source>This lane completes a lap now</source>
        <translation>Diese Bahn beendet jetzt eine Runde</translation>
    </message>
    <message>
        <source>This lane has cut a pylon now</source>
        <translation>Diese Bahn hat jetzt einen Pylon geschnitten</translation>
    </message>
    <message>
        <source>This lane turns at the far pylon now</source>
        <translation>Diese Bahn wendet jetzt am fernen Pylon</translation>
    </message>
    <message>
        <source>Give this lane this place</source>
        <translation>Dieser Bahn diesen Platz geben</translation>
    </message>
    <message>
        <source>The mark in large</source>
        <translation>Die Marke in groß</translation>
    </message>
    <message>
        <source>Close this window; the link goes on</source>
        <translation>Dieses Fenster schließen; die Verbindung läuft weiter</translation>
    </message>
    <message>
        <source>Show or hide the messages and their counters</source>
        <translation>Die Meldungen und ihre Zähler zeigen oder verbergen</translation>
    </message>
    <message>
        <source>Ask this station how it is</source>
        <translation>Diese Station fragen, wie es ihr geht</translation>
    </message>
    <message>
        <source>Show the newest message again</source>
        <translation>Wieder die neueste Meldung zeigen</translation>
    </message>
    <message>
        <source>Copy the message to the clipboard</source>
        <translation>Die Meldung in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Copy the counters to the clipboard</source>
        <translation>Die Zähler in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <source>Close this window</source>
        <translation>Dieses Fenster schließen</translation>
    </message>
    <message>
        <source>Take the chosen entry out of the log</source>
        <translation>Den gewählten Eintrag aus dem Protokoll nehmen</translation>
    </message>
    <message>
        <source>Enter a lap that nobody has entered</source>
        <translation>Eine Runde eintragen, die niemand eingetragen hat</translation>
    </message>
    <message>
        <source>The chosen cut was at another pylon</source>
        <translation>Der gewählte Cut war an einem anderen Pylon</translation>
    </message>
    <message>
        <source>Copy the chosen rows for a spreadsheet</source>
        <translation>Die gewählten Zeilen für eine Tabelle kopieren</translation>
    </message>
    <message>
        <source>Write all races to a file</source>
        <translation>Alle Rennen in eine Datei schreiben</translation>
    </message>
    <message>
        <source>Show the scoreboard alone on the chosen screen</source>
        <translation>Nur die Anzeigetafel auf dem gewählten Bildschirm zeigen</translation>
    </message>
    <message>
        <source>A race is being flown</source>
        <translation>Ein Rennen wird geflogen</translation>
    </message>
    <message>
        <source>Save the finished race first</source>
        <translation>Erst das beendete Rennen speichern</translation>
    </message>
    <message>
        <source>This race has been flown: Refly repeats it</source>
        <translation>Dieses Rennen ist geflogen: Neuflug wiederholt es</translation>
    </message>
    <message>
        <source>The race is not over yet</source>
        <translation>Das Rennen ist noch nicht vorbei</translation>
    </message>
    <message>
        <source>No race waits to be saved</source>
        <translation>Kein Rennen ist zu speichern</translation>
    </message>
    <message>
        <source>No race to end or to throw away</source>
        <translation>Kein Rennen ist zu beenden oder zu verwerfen</translation>
    </message>
    <message>
        <source>Places are given after the finish</source>
        <translation>Plätze werden nach dem Ziel vergeben</translation>
    </message>
    <message>
        <source>Only a race that has been flown can be flown again</source>
        <translation>Nur ein geflogenes Rennen kann noch einmal geflogen werden</translation>
    </message>
    <message>
        <source>Nothing was entered by hand</source>
        <translation>Nichts wurde von Hand eingetragen</translation>
    </message>
    <message>
        <source>Nothing was taken back</source>
        <translation>Nichts wurde zurückgenommen</translation>
    </message>
    <message>
        <source>Show a saved race first</source>
        <translation>Erst ein gespeichertes Rennen zeigen</translation>
    </message>
    <message>
        <source>No race was thrown away</source>
        <translation>Kein Rennen wurde verworfen</translation>
    </message>
    <message>
        <source>No race is being flown</source>
        <translation>Kein Rennen wird geflogen</translation>
    </message>
    <message>
        <source>This lane has flown its laps</source>
        <translation>Diese Bahn hat ihre Runden geflogen</translation>
    </message>
    <message>
        <source>There is no entry to strike</source>
        <translation>Es gibt keinen Eintrag zu streichen</translation>
    </message>
    <message>
        <source>Choose a cut that counts</source>
        <translation>Einen Cut wählen, der zählt</translation>
    </message>
    <message>
        <source>This project is not there any more:</source>
        <translation>Dieses Projekt ist nicht mehr da:</translation>
    </message>
    <message>
        <source>Open Recent</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>New Quorvane Project</source>
        <translation>Neues Quorvane-Projekt</translation>
    </message>
    <message>
        <source>Leader</source>
        <translation>Führt</translation>
    </message>
    <message>
        <source>Last %1</source>
        <translation>Letzte %1</translation>
    </message>
    <message>
        <source>-%1 lap</source>
        <translation>-%1 Runde</translation>
    </message>
    <message>
        <source>-%1 laps</source>
        <translation>-%1 Runden</translation>
    </message>
    <message>
        <source>laps flown of laps due</source>
        <translation>geflogene von fälligen Runden</translation>
    </message>
    <message>
        <source>last lap</source>
        <translation>letzte Runde</translation>
    </message>
    <message>
        <source>gap to the leader</source>
        <translation>Abstand zum Führenden</translation>
    </message>
    <message>
        <source>%1 saved: %2</source>
        <translation>%1 gespeichert: %2</translation>
    </message>
    <message>
        <source>Race %1 is in the project already: saved as %2: %3</source>
        <translation>Rennen %1 steht schon im Projekt: gespeichert als %2: %3</translation>
    </message>
    <message>
        <source>Race %1 is in the project already: saved as its refly, because no other number is free: %2</source>
        <translation>Rennen %1 steht schon im Projekt: gespeichert als sein Neuflug, weil keine andere Nummer frei ist: %2</translation>
    </message>
    <message>
        <source>%1 lane %2 %3</source>
        <translation>%1 Bahn %2 %3</translation>
    </message>
    <message>
        <source>lane %1 %2</source>
        <translation>Bahn %1 %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Fly on a simulated field, without a radio</source>
        <translation>Auf einem simulierten Feld fliegen, ohne Funk</translation>
    </message>
    <message>
        <source>Start the simulated field, in a project of its own</source>
        <translation>Das simulierte Feld starten, in einem eigenen Projekt</translation>
    </message>
    <message>
        <source>Stop the field and go back to the contest</source>
        <translation>Das Feld beenden und zum Wettbewerb zurückkehren</translation>
    </message>
    <message>
        <source>Close this window; the practice goes on</source>
        <translation>Dieses Fenster schließen; die Übung läuft weiter</translation>
    </message>
    <message>
        <source>The colours of all windows</source>
        <translation>Die Farben aller Fenster</translation>
    </message>
    <message>
        <source>Print this report</source>
        <translation>Diesen Bericht drucken</translation>
    </message>
    <message>
        <source>How large the pages are shown</source>
        <translation>Wie groß die Seiten gezeigt werden</translation>
    </message>
    <message>
        <source>Does nothing here: the manual is in the console&apos;s menu Help</source>
        <translation>Tut hier nichts: das Handbuch ist im Menü Hilfe der Konsole</translation>
    </message>
    <message>
        <source>Free lap</source>
        <translation>Freirunde</translation>
    </message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
</context>
</TS>
