<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ADAlertManager</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>The item “%1” you want to unhide already exists. Do you want to replace or rename it to “%2”?</source>
        <translation>Das Element „%1“, das Sie zurückholen möchten, existiert bereits. Möchten Sie es ersetzen oder in „%2“ umbenennen?</translation>
    </message>
    <message>
        <source>Some items cannot be unhidden.</source>
        <translation>Einige Elemente können nicht zurückgeholt werden.</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The item “%1” you want to hide is in the ‘Open Recent’ list of some applications. If you want to remove it from that list, please close the applications below before continuing.</source>
        <translation>Das Element „%1“, das Sie verbergen möchten, steht in der Liste „Zuletzt benutzt“ einiger Programme. Möchten Sie es daraus entfernen, schließen Sie bitte die unten genannten Programme, bevor Sie fortfahren.</translation>
    </message>
    <message>
        <source>The item you want to hide is in the ‘Open Recent’ list.</source>
        <translation>Das Element, das Sie verbergen möchten, steht in der Liste „Zuletzt benutzt“.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>Veilkeep can clean the &apos;Open Recent&apos; list of some applications and Finder. This will avoid finding your files in that list, but the hiding operation will take a bit longer. You can enable/disable this option in Veilkeep Preferences.</source>
        <translation>Veilkeep kann die Listen „Zuletzt benutzt“ einiger Programme und der Dateiverwaltung bereinigen. Ihre Dateien sind dann dort nicht mehr zu finden, das Verbergen dauert jedoch etwas länger. Sie können dies in den Einstellungen von Veilkeep ein- und ausschalten.</translation>
    </message>
    <message>
        <source>Would you like to enable this feature now?</source>
        <translation>Möchten Sie diese Funktion jetzt einschalten?</translation>
    </message>
    <message>
        <source>Recent files list removal.</source>
        <translation>Zuletzt benutzte Dateien bereinigen.</translation>
    </message>
    <message>
        <source>Remove Recents</source>
        <translation>Listen bereinigen</translation>
    </message>
    <message>
        <source>Don&apos;t Remove Recents</source>
        <translation>Listen nicht bereinigen</translation>
    </message>
</context>
<context>
    <name>AboutWindow</name>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Hides files and folders from ordinary view and brings them back.</source>
        <translation>Verbirgt Dateien und Ordner vor gewöhnlichen Blicken und holt sie zurück.</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3. It comes with no warranty.</source>
        <translation>Freie Software unter der GNU General Public License, Version 3. Es besteht keinerlei Gewährleistung.</translation>
    </message>
    <message>
        <source>Open the Guide</source>
        <translation>Anleitung öffnen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>Alerts</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>ApplicationOnBus</name>
    <message>
        <source>Only the same user&apos;s programs may ask for this.</source>
        <translation>Nur Programme desselben Benutzers dürfen darum bitten.</translation>
    </message>
    <message>
        <source>Too many items in one request.</source>
        <translation>Zu viele Elemente in einer Anfrage.</translation>
    </message>
    <message>
        <source>There is no action “%1”.</source>
        <translation>Es gibt keine Aktion „%1“.</translation>
    </message>
    <message>
        <source>This action takes one list of URIs.</source>
        <translation>Diese Aktion erwartet eine Liste von URIs.</translation>
    </message>
</context>
<context>
    <name>Asker</name>
    <message>
        <source>The item “%1” was not replaced, since its disk has no trash.</source>
        <translation>Das Element „%1“ wurde nicht ersetzt, da sein Datenträger keinen Papierkorb hat.</translation>
    </message>
    <message>
        <source>The item “%1” was not replaced, since another one took its place meanwhile.</source>
        <translation>Das Element „%1“ wurde nicht ersetzt, da inzwischen ein anderes an seiner Stelle liegt.</translation>
    </message>
    <message>
        <source>The item “%1” was not replaced, since it could not be moved to the trash. %2</source>
        <translation>Das Element „%1“ wurde nicht ersetzt, da es nicht in den Papierkorb gelegt werden konnte. %2</translation>
    </message>
    <message>
        <source>Some items cannot be unhidden.</source>
        <translation>Einige Elemente können nicht zurückgeholt werden.</translation>
    </message>
</context>
<context>
    <name>BatchReport</name>
    <message>
        <source>what was done here may not survive a power cut: %1</source>
        <translation>was hier getan wurde, übersteht womöglich keinen Stromausfall: %1</translation>
    </message>
    <message>
        <source>Item is not hidden.</source>
        <translation>Das Element ist nicht verborgen.</translation>
    </message>
    <message>
        <source>interrupted; items left as they are: %1</source>
        <translation>unterbrochen; unveränderte Elemente: %1</translation>
    </message>
</context>
<context>
    <name>BrokenFiles</name>
    <message>
        <source>The file &quot;%1&quot; is located on a volume (network or a flash drive) and cannot be found.</source>
        <translation>Die Datei „%1“ liegt auf einem Datenträger (im Netz oder auf einem USB-Stick) und kann nicht gefunden werden.</translation>
    </message>
    <message>
        <source>Veilkeep can try to find it, but this can take some time. Would you like to locate it automatically?</source>
        <translation>Veilkeep kann versuchen, sie zu finden, doch das kann etwas dauern. Soll sie automatisch gesucht werden?</translation>
    </message>
    <message>
        <source>Locate</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Ignore</source>
        <translation>Ignorieren</translation>
    </message>
    <message>
        <source>Searching for inconsistent files. Please wait...</source>
        <translation>Unstimmige Dateien werden gesucht. Bitte warten…</translation>
    </message>
    <message>
        <source>Searching for missing items...</source>
        <translation>Fehlende Elemente werden gesucht…</translation>
    </message>
</context>
<context>
    <name>BusRequest</name>
    <message>
        <source>Too many items in one request.</source>
        <translation>Zu viele Elemente in einer Anfrage.</translation>
    </message>
    <message>
        <source>A path in the request does not begin with &quot;/&quot;.</source>
        <translation>Ein Pfad der Anfrage beginnt nicht mit „/“.</translation>
    </message>
    <message>
        <source>A path in the request has a NUL byte.</source>
        <translation>Ein Pfad der Anfrage enthält ein NUL-Byte.</translation>
    </message>
    <message>
        <source>The paths in the request are too long together.</source>
        <translation>Die Pfade der Anfrage sind zusammen zu lang.</translation>
    </message>
    <message>
        <source>The request names no command.</source>
        <translation>Die Anfrage nennt keinen Befehl.</translation>
    </message>
    <message>
        <source>Too many options in one request.</source>
        <translation>Zu viele Optionen in einer Anfrage.</translation>
    </message>
    <message>
        <source>An option of the request is too long.</source>
        <translation>Eine Option der Anfrage ist zu lang.</translation>
    </message>
</context>
<context>
    <name>CallerPrompt</name>
    <message>
        <source>The password was not given.</source>
        <translation>Das Passwort wurde nicht eingegeben.</translation>
    </message>
</context>
<context>
    <name>DelayInhibitor</name>
    <message>
        <source>Items have to be hidden first</source>
        <translation>Elemente müssen zuerst verborgen werden</translation>
    </message>
</context>
<context>
    <name>ErrorText</name>
    <message>
        <source>Unknown error (%1)</source>
        <translation>Unbekannter Fehler (%1)</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Erfolgreich</translation>
    </message>
    <message>
        <source>Unknown error</source>
        <translation>Unbekannter Fehler</translation>
    </message>
    <message>
        <source>Item not found.</source>
        <translation>Element nicht gefunden.</translation>
    </message>
    <message>
        <source>Not enough rights to perform operation.</source>
        <translation>Die Rechte reichen für diesen Vorgang nicht aus.</translation>
    </message>
    <message>
        <source>Item you requested is already hidden.</source>
        <translation>Das gewünschte Element ist bereits verborgen.</translation>
    </message>
    <message>
        <source>Can&apos;t create directory for storing hidden items.</source>
        <translation>Der Ordner für verborgene Elemente kann nicht angelegt werden.</translation>
    </message>
    <message>
        <source>Item with the same name already exists.</source>
        <translation>Ein Element mit diesem Namen existiert bereits.</translation>
    </message>
    <message>
        <source>User cancelled operation.</source>
        <translation>Der Vorgang wurde abgebrochen.</translation>
    </message>
    <message>
        <source>It is not allowed to hide these items to avoid serious system malfunctions.</source>
        <translation>Diese Elemente dürfen nicht verborgen werden, damit das System keinen Schaden nimmt.</translation>
    </message>
    <message>
        <source>An item with this name can&apos;t be hidden: its hidden name would be too long or could not be turned back.</source>
        <translation>Ein Element mit diesem Namen kann nicht verborgen werden: Der verborgene Name wäre zu lang oder ließe sich nicht zurückverwandeln.</translation>
    </message>
    <message>
        <source>There is no space left on the disk.</source>
        <translation>Auf dem Datenträger ist kein Platz mehr.</translation>
    </message>
    <message>
        <source>The disk is read-only.</source>
        <translation>Der Datenträger kann nur gelesen werden.</translation>
    </message>
    <message>
        <source>The item can&apos;t be moved: it is a mount point, or parts of it lie on another volume.</source>
        <translation>Das Element kann nicht verschoben werden: Es ist ein Einhängepunkt, oder Teile davon liegen auf einem anderen Datenträger.</translation>
    </message>
    <message>
        <source>The disk reported an input/output error.</source>
        <translation>Der Datenträger meldete einen Ein-/Ausgabefehler.</translation>
    </message>
    <message>
        <source>The file is damaged.</source>
        <translation>Die Datei ist beschädigt.</translation>
    </message>
    <message>
        <source>The file is too large.</source>
        <translation>Die Datei ist zu groß.</translation>
    </message>
    <message>
        <source>The file was written by a newer version of Veilkeep.</source>
        <translation>Die Datei wurde von einer neueren Version von Veilkeep geschrieben.</translation>
    </message>
    <message>
        <source>It was done, but may not survive a power cut.</source>
        <translation>Es wurde ausgeführt, übersteht aber womöglich keinen Stromausfall.</translation>
    </message>
    <message>
        <source>There is something there that is not a file.</source>
        <translation>Dort liegt etwas, das keine Datei ist.</translation>
    </message>
    <message>
        <source>The request is not valid.</source>
        <translation>Die Anfrage ist ungültig.</translation>
    </message>
</context>
<context>
    <name>FileListActions</name>
    <message>
        <source>%1 (default)</source>
        <translation>%1 (Standard)</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>&lt;None&gt;</source>
        <translation>&lt;Keines&gt;</translation>
    </message>
    <message>
        <source>Other…</source>
        <translation>Anderes…</translation>
    </message>
    <message>
        <source>Remove From List</source>
        <translation>Aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Remove From Group</source>
        <translation>Aus der Gruppe entfernen</translation>
    </message>
    <message>
        <source>Remove Item</source>
        <translation>Element entfernen</translation>
    </message>
    <message>
        <source>Remove selected item from the list</source>
        <translation>Ausgewähltes Element aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Remove Items</source>
        <translation>Elemente entfernen</translation>
    </message>
    <message>
        <source>Remove selected items from the list</source>
        <translation>Ausgewählte Elemente aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Reveal in Finder</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Hide file</source>
        <translation>Datei verbergen</translation>
    </message>
    <message>
        <source>Unhide file</source>
        <translation>Datei zurückholen</translation>
    </message>
    <message>
        <source>Fix broken file</source>
        <translation>Defekte Datei wiederfinden</translation>
    </message>
    <message>
        <source>“%1” could not be opened.</source>
        <translation>„%1“ konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Some items could not be opened.</source>
        <translation>Einige Elemente konnten nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>FilesViewController</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Are you sure you want to remove selected items from list?</source>
        <translation>Möchten Sie die ausgewählten Elemente wirklich aus der Liste entfernen?</translation>
    </message>
    <message>
        <source>Items will be deleted only from list, not filesystem.</source>
        <translation>Die Elemente werden nur aus der Liste entfernt, nicht vom Datenträger gelöscht.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Unhide all files</source>
        <translation>Alle zurückholen</translation>
    </message>
    <message>
        <source>You are trying to remove some hidden files from list! Would you like to unhide them first?</source>
        <translation>Sie möchten verborgene Dateien aus der Liste entfernen. Sollen sie zuerst zurückgeholt werden?</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>Zurückholen</translation>
    </message>
    <message>
        <source>Searching for inconsistent files. Please wait...</source>
        <translation>Unstimmige Dateien werden gesucht. Bitte warten…</translation>
    </message>
    <message>
        <source>An item could not be added.</source>
        <translation>Ein Element konnte nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>Some items could not be added.</source>
        <translation>Einige Elemente konnten nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>The following item is already in the list of %1 and cannot be added again:
</source>
        <translation>Das folgende Element steht schon in der Liste von %1 und kann nicht noch einmal hinzugefügt werden:
</translation>
    </message>
    <message>
        <source>The following items are already in the list of %1 and they cannot be added again:
</source>
        <translation>Die folgenden Elemente stehen schon in der Liste von %1 und können nicht noch einmal hinzugefügt werden:
</translation>
    </message>
    <message>
        <source>The following item could not be found:
</source>
        <translation>Das folgende Element wurde nicht gefunden:
</translation>
    </message>
    <message>
        <source>The following items could not be found:
</source>
        <translation>Die folgenden Elemente wurden nicht gefunden:
</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>The &quot;%1&quot; item is a protected system file or folder.</source>
        <translation>Das Element „%1“ ist eine geschützte Systemdatei oder ein geschützter Systemordner.</translation>
    </message>
    <message>
        <source>Veilkeep is not allowed to hide it to avoid serious system malfunctions.</source>
        <translation>Veilkeep darf es nicht verbergen, damit das System keinen Schaden nimmt.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Previously visible file is broken.</source>
        <translation>Eine zuvor sichtbare Datei ist defekt.</translation>
    </message>
    <message>
        <source>File %1 is in broken state. It might be moved to some new place. You can specify it&apos;s new location or just delete it from the list.</source>
        <translation>Die Datei %1 ist defekt. Vielleicht wurde sie verschoben. Sie können ihren neuen Ort angeben oder sie einfach aus der Liste entfernen.</translation>
    </message>
    <message>
        <source>Locate File...</source>
        <translation>Datei suchen…</translation>
    </message>
    <message>
        <source>Remove From List</source>
        <translation>Aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Previously hidden file is broken.</source>
        <translation>Eine zuvor verborgene Datei ist defekt.</translation>
    </message>
    <message>
        <source>File %1 is in broken state. It might be moved to some new place. You can specify directory where it can reside and run restoring or just delete it from the list.</source>
        <translation>Die Datei %1 ist defekt. Vielleicht wurde sie verschoben. Sie können den Ordner angeben, in dem sie liegen kann, und ihn durchsuchen lassen, oder sie einfach aus der Liste entfernen.</translation>
    </message>
    <message>
        <source>Restore Directory...</source>
        <translation>Ordner durchsuchen…</translation>
    </message>
    <message>
        <source>Restoring is in progress. Please wait...</source>
        <translation>Verborgene Elemente werden gesucht. Bitte warten…</translation>
    </message>
    <message>
        <source>Directory: %1</source>
        <translation>Ordner: %1</translation>
    </message>
</context>
<context>
    <name>FinderPlugin</name>
    <message>
        <source>Finder plugin could not be uninstalled.</source>
        <translation>Die Einträge in der Dateiverwaltung konnten nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Could not uninstall plugin from %1. Try to remove it manually.</source>
        <translation>%1 konnte nicht entfernt werden. Versuchen Sie, es von Hand zu löschen.</translation>
    </message>
    <message>
        <source>Plugin successfully uninstalled</source>
        <translation>Die Einträge wurden entfernt</translation>
    </message>
    <message>
        <source>Plugin successfully uninstalled from %1
Please restart Finder to apply the changes.</source>
        <translation>Entfernt: %1
Bitte starten Sie die Dateiverwaltung neu, damit die Änderung wirkt.</translation>
    </message>
    <message>
        <source>Finder plugin could not be installed.</source>
        <translation>Die Einträge in der Dateiverwaltung konnten nicht eingerichtet werden.</translation>
    </message>
    <message>
        <source>No file manager was found that %1 can have an entry in.</source>
        <translation>Es wurde keine Dateiverwaltung gefunden, in der %1 einen Eintrag haben kann.</translation>
    </message>
    <message>
        <source>Could not create directory for Finder plugins: %1
Try to create it manually and repeat the installation.</source>
        <translation>Der Ordner für die Einträge konnte nicht angelegt werden: %1
Legen Sie ihn von Hand an und versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>Could not install plugin to %1.</source>
        <translation>%1 konnte nicht eingerichtet werden.</translation>
    </message>
    <message>
        <source>Plugin was successfully installed</source>
        <translation>Die Einträge wurden eingerichtet</translation>
    </message>
    <message>
        <source>Plugin was successfully installed to %1
Please restart Finder to start using it.</source>
        <translation>Eingerichtet: %1
Bitte starten Sie die Dateiverwaltung neu, um die Einträge zu benutzen.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Restart Finder</source>
        <translation>Dateiverwaltung neu starten</translation>
    </message>
    <message>
        <source>I&apos;ll restart it later</source>
        <translation>Später neu starten</translation>
    </message>
    <message>
        <source>Entries for all users stay</source>
        <translation>Einträge für alle Benutzer bleiben</translation>
    </message>
    <message>
        <source>%1: the entries came with %2 for all users of this computer, and go with it.</source>
        <translation>%1: Die Einträge kamen mit %2 für alle Benutzer dieses Computers und gehen mit ihm.</translation>
    </message>
    <message>
        <source>%1 could not be restarted.</source>
        <translation>%1 konnte nicht neu gestartet werden.</translation>
    </message>
    <message>
        <source>Please end it, if it is still running, and start it again yourself.</source>
        <translation>Bitte beenden Sie das Programm, falls es noch läuft, und starten Sie es selbst neu.</translation>
    </message>
</context>
<context>
    <name>GroupEdit</name>
    <message>
        <source>A group needs a name.</source>
        <translation>Eine Gruppe braucht einen Namen.</translation>
    </message>
    <message>
        <source>This name is too long: %1 characters are the most.</source>
        <translation>Dieser Name ist zu lang: Höchstens %1 Zeichen sind erlaubt.</translation>
    </message>
    <message>
        <source>The name of a group is one line of text.</source>
        <translation>Der Name einer Gruppe ist eine Zeile Text.</translation>
    </message>
    <message>
        <source>A group with this name exists already.</source>
        <translation>Eine Gruppe mit diesem Namen gibt es schon.</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
    <message>
        <source>Simple</source>
        <translation>Einfach</translation>
    </message>
    <message>
        <source>Pictures</source>
        <translation>Bilder</translation>
    </message>
    <message>
        <source>Public</source>
        <translation>Öffentlich</translation>
    </message>
    <message>
        <source>Pink</source>
        <translation>Rosa</translation>
    </message>
    <message>
        <source>Danger</source>
        <translation>Achtung</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Smile</source>
        <translation>Lächeln</translation>
    </message>
    <message>
        <source>Drop</source>
        <translation>Tropfen</translation>
    </message>
    <message>
        <source>Games</source>
        <translation>Spiele</translation>
    </message>
    <message>
        <source>Movies</source>
        <translation>Filme</translation>
    </message>
    <message>
        <source>Music</source>
        <translation>Musik</translation>
    </message>
    <message>
        <source>Private</source>
        <translation>Privat</translation>
    </message>
    <message>
        <source>Sites</source>
        <translation>Webseiten</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>XXX</source>
        <translation>XXX</translation>
    </message>
    <message>
        <source>The icon comes from an image file. OK replaces it with the one selected in the list; to keep it, choose the file again.</source>
        <translation>Das Symbol stammt aus einer Bilddatei. OK ersetzt es durch das in der Liste gewählte; um es zu behalten, wählen Sie die Datei noch einmal.</translation>
    </message>
    <message>
        <source>The image that you chose stays the icon: OK takes that. To take another one, cancel and edit the group again.</source>
        <translation>Das gewählte Bild bleibt das Symbol: OK übernimmt es. Um ein anderes zu nehmen, brechen Sie ab und bearbeiten Sie die Gruppe noch einmal.</translation>
    </message>
    <message>
        <source>“%1” is no image that can be read. The icon stays as it is.</source>
        <translation>„%1“ ist kein lesbares Bild. Das Symbol bleibt, wie es ist.</translation>
    </message>
    <message>
        <source>This is no image that can be read. The icon stays as it is.</source>
        <translation>Das ist kein lesbares Bild. Das Symbol bleibt, wie es ist.</translation>
    </message>
    <message>
        <source>This group is no longer there.</source>
        <translation>Diese Gruppe gibt es nicht mehr.</translation>
    </message>
    <message>
        <source>The image cannot be kept: %1</source>
        <translation>Das Bild kann nicht aufbewahrt werden: %1</translation>
    </message>
    <message>
        <source>“%1” can no longer be read. OK takes the icon that is selected in the list.</source>
        <translation>„%1“ kann nicht mehr gelesen werden. OK nimmt das in der Liste gewählte Symbol.</translation>
    </message>
    <message>
        <source>“%1” can no longer be read. OK leaves the icon as it is.</source>
        <translation>„%1“ kann nicht mehr gelesen werden. OK lässt das Symbol, wie es ist.</translation>
    </message>
</context>
<context>
    <name>GroupNames</name>
    <message>
        <source>All Files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>Custom Groups</source>
        <translation>Eigene Gruppen</translation>
    </message>
    <message>
        <source>Secret Pictures</source>
        <translation>Geheime Bilder</translation>
    </message>
    <message>
        <source>Private Files</source>
        <translation>Private Dateien</translation>
    </message>
    <message>
        <source>AutoHide Group</source>
        <translation>AutoHide-Gruppe</translation>
    </message>
    <message>
        <source>New Group</source>
        <translation>Neue Gruppe</translation>
    </message>
    <message>
        <source>New Group %1</source>
        <translation>Neue Gruppe %1</translation>
    </message>
</context>
<context>
    <name>GroupRequests</name>
    <message>
        <source>This is no name for a group.</source>
        <translation>Das ist kein Name für eine Gruppe.</translation>
    </message>
    <message>
        <source>A group with this name exists already.</source>
        <translation>Eine Gruppe mit diesem Namen gibt es schon.</translation>
    </message>
    <message>
        <source>The name and the icon of this group stay as they are.</source>
        <translation>Name und Symbol dieser Gruppe bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>Nothing was removed.</source>
        <translation>Nichts wurde entfernt.</translation>
    </message>
    <message>
        <source>This group stays where it is.</source>
        <translation>Diese Gruppe bleibt, wo sie ist.</translation>
    </message>
    <message>
        <source>No group can stand before this one.</source>
        <translation>Vor dieser Gruppe kann keine andere stehen.</translation>
    </message>
    <message>
        <source>The item is not in the list.</source>
        <translation>Das Element steht nicht in der Liste.</translation>
    </message>
    <message>
        <source>There is no group of all items.</source>
        <translation>Eine Gruppe aller Elemente gibt es nicht.</translation>
    </message>
    <message>
        <source>The item stayed visible.</source>
        <translation>Das Element blieb sichtbar.</translation>
    </message>
    <message>
        <source>Some errors have been occured while hiding files</source>
        <translation>Beim Verbergen sind Fehler aufgetreten</translation>
    </message>
    <message>
        <source>The AutoHide groups are shown already.</source>
        <translation>Die AutoHide-Gruppen sind bereits sichtbar.</translation>
    </message>
</context>
<context>
    <name>GroupViewController</name>
    <message>
        <source>Some errors have been occured while unhiding files</source>
        <translation>Beim Zurückholen sind Fehler aufgetreten</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Unable to remove group &quot;%1&quot;.</source>
        <translation>Die Gruppe „%1“ kann nicht entfernt werden.</translation>
    </message>
    <message>
        <source>Sorry, but this group cannot be removed because it contains all of files.</source>
        <translation>Diese Gruppe kann nicht entfernt werden, weil sie alle Dateien enthält.</translation>
    </message>
    <message>
        <source>Are you sure you want to remove &quot;%1&quot; group?</source>
        <translation>Möchten Sie die Gruppe „%1“ wirklich entfernen?</translation>
    </message>
    <message>
        <source>All files of this group will be moved to the &quot;All Files&quot; group.</source>
        <translation>Alle Dateien dieser Gruppe kommen in die Gruppe „Alle Dateien“.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%1 &quot;%2&quot; Group</source>
        <translation>Gruppe „%2“ %1</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>zurückholen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>verbergen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; keeps its name until you enter another one.</source>
        <translation>„%1“ behält den Namen, bis Sie einen anderen eingeben.</translation>
    </message>
</context>
<context>
    <name>GroupsModel</name>
    <message>
        <source>1 item</source>
        <translation>1 Element</translation>
    </message>
    <message>
        <source>%1 items</source>
        <translation>%1 Elemente</translation>
    </message>
    <message>
        <source>shown</source>
        <translation>sichtbar</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>verborgen</translation>
    </message>
    <message>
        <source>AutoHide</source>
        <translation>AutoHide</translation>
    </message>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
</context>
<context>
    <name>HideCaller</name>
    <message>
        <source>The item “%1” could not be hidden.</source>
        <translation>Das Element „%1“ konnte nicht verborgen werden.</translation>
    </message>
    <message>
        <source>Some errors have been occured while hiding files</source>
        <translation>Beim Verbergen sind Fehler aufgetreten</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>HideOperations</name>
    <message>
        <source>Not enough rights</source>
        <translation>Rechte reichen nicht aus</translation>
    </message>
    <message>
        <source>%1 could not hide some of selected files</source>
        <translation>%1 konnte einige der ausgewählten Dateien nicht verbergen</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to hide some files, would you like to authentificate to hide these files?</source>
        <translation>Ihre Rechte reichen nicht aus, um einige Dateien zu verbergen. Möchten Sie sich authentifizieren, um sie zu verbergen?</translation>
    </message>
    <message>
        <source>%1 could not hide some items</source>
        <translation>%1 konnte einige Elemente nicht verbergen</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to hide some items. You can enable privileged files hiding in Veilkeep options.</source>
        <translation>Ihre Rechte reichen nicht aus, um einige Elemente zu verbergen. In den Einstellungen von Veilkeep können Sie das Verbergen mit erhöhten Rechten einschalten.</translation>
    </message>
    <message>
        <source>Not enough permitions.</source>
        <translation>Die Rechte reichen nicht aus.</translation>
    </message>
    <message>
        <source>Unable to unhide some of selected files</source>
        <translation>Einige der ausgewählten Dateien können nicht zurückgeholt werden</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to unhide some files, would you like to authentificate to unhide these files?</source>
        <translation>Ihre Rechte reichen nicht aus, um einige Dateien zurückzuholen. Möchten Sie sich authentifizieren, um sie zurückzuholen?</translation>
    </message>
    <message>
        <source>Unable to unhide some files</source>
        <translation>Einige Dateien können nicht zurückgeholt werden</translation>
    </message>
    <message>
        <source>You don&apos;t have enough permissions to unhide some files. Please enable the &apos;Allow hiding files with privileges&apos; option in Preferences.</source>
        <translation>Ihre Rechte reichen nicht aus, um einige Dateien zurückzuholen. Bitte schalten Sie in den Einstellungen „Verbergen mit erhöhten Rechten erlauben“ ein.</translation>
    </message>
    <message>
        <source>Parent directory is hidden.</source>
        <translation>Der übergeordnete Ordner ist verborgen.</translation>
    </message>
    <message>
        <source>Parent directory is hidden</source>
        <translation>Der übergeordnete Ordner ist verborgen</translation>
    </message>
    <message>
        <source>File &apos;%1&apos; is hidden because it&apos;s parent directory is hidden, but it isn&apos;t listed in Veilkeep. Try to run restore mode for the top-most visible directory of this file.</source>
        <translation>Die Datei „%1“ ist verborgen, weil ihr übergeordneter Ordner verborgen ist; er steht aber nicht in der Liste von Veilkeep. Lassen Sie den obersten sichtbaren Ordner dieser Datei nach verborgenen Elementen durchsuchen.</translation>
    </message>
    <message>
        <source>File &apos;%1&apos; is hidden because it&apos;s parent directory &apos;%2&apos; is hidden, but it isn&apos;t listed in Veilkeep. Try to run restore mode for &apos;%3&apos;.</source>
        <translation>Die Datei „%1“ ist verborgen, weil ihr übergeordneter Ordner „%2“ verborgen ist; er steht aber nicht in der Liste von Veilkeep. Lassen Sie „%3“ nach verborgenen Elementen durchsuchen.</translation>
    </message>
    <message>
        <source>File &apos;%1&apos; is hidden because it&apos;s parent directory &apos;%2&apos; is hidden.</source>
        <translation>Die Datei „%1“ ist verborgen, weil ihr übergeordneter Ordner „%2“ verborgen ist.</translation>
    </message>
    <message>
        <source>Unhide Top Level</source>
        <translation>Obersten zurückholen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The volume that the item lies on is not mounted.</source>
        <translation>Der Datenträger, auf dem das Element liegt, ist nicht eingehängt.</translation>
    </message>
    <message>
        <source>Authentificate</source>
        <translation>Authentifizieren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Error for file: %1</source>
        <translation>Fehler bei der Datei: %1</translation>
    </message>
    <message>
        <source>Hiding of files started. Please wait...</source>
        <translation>Dateien werden verborgen. Bitte warten…</translation>
    </message>
    <message>
        <source>Unhiding of files is in progress. Please wait...</source>
        <translation>Dateien werden zurückgeholt. Bitte warten…</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>The list of items could not be saved: %1</source>
        <translation>Die Liste der Elemente konnte nicht gesichert werden: %1</translation>
    </message>
    <message>
        <source>Nothing was hidden.</source>
        <translation>Nichts wurde verborgen.</translation>
    </message>
</context>
<context>
    <name>InfoPane</name>
    <message>
        <source>Hidden</source>
        <translation>Verborgen</translation>
    </message>
    <message>
        <source>Broken</source>
        <translation>Defekt</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Sichtbar</translation>
    </message>
    <message>
        <source>Several</source>
        <translation>Verschiedene</translation>
    </message>
    <message numerus="yes">
        <source>%Ln items</source>
        <translation>
            <numerusform>%Ln Element</numerusform>
            <numerusform>%Ln Elemente</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>InstallationOffer</name>
    <message>
        <source>Installation of %1 failed!</source>
        <translation>%1 konnte nicht installiert werden!</translation>
    </message>
    <message>
        <source>Try to copy it to a desired location manually. The recommended location is your Applications folder.</source>
        <translation>Versuchen Sie, es von Hand an den gewünschten Ort zu kopieren. Empfohlen ist Ihr Programmordner.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>%1 is currently running not from Applications folder.</source>
        <translation>%1 läuft gerade nicht aus dem Programmordner.</translation>
    </message>
    <message>
        <source>Would you like to install %1 into your Applications folder before quitting?</source>
        <translation>Möchten Sie %1 vor dem Beenden in Ihrem Programmordner installieren?</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>Installieren</translation>
    </message>
    <message>
        <source>Don&apos;t install</source>
        <translation>Nicht installieren</translation>
    </message>
    <message>
        <source>%1 is already installed on your system!</source>
        <translation>%1 ist auf Ihrem System bereits installiert!</translation>
    </message>
    <message>
        <source>Would you like to overwrite %1 in your Applications folder?</source>
        <translation>Möchten Sie %1 in Ihrem Programmordner ersetzen?</translation>
    </message>
    <message>
        <source>Overwrite</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Don&apos;t overwrite</source>
        <translation>Nicht ersetzen</translation>
    </message>
</context>
<context>
    <name>ItemRequests</name>
    <message>
        <source>The item is in the list already.</source>
        <translation>Das Element steht schon in der Liste.</translation>
    </message>
    <message>
        <source>The item could not be added.</source>
        <translation>Das Element konnte nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>The item is not in the list.</source>
        <translation>Das Element steht nicht in der Liste.</translation>
    </message>
    <message>
        <source>Nothing was removed.</source>
        <translation>Nichts wurde entfernt.</translation>
    </message>
    <message>
        <source>The items that were hidden were brought back, and all stay in the list.</source>
        <translation>Die verborgenen Elemente wurden zurückgeholt, und alle bleiben in der Liste.</translation>
    </message>
    <message>
        <source>Item is not hidden.</source>
        <translation>Das Element ist nicht verborgen.</translation>
    </message>
</context>
<context>
    <name>ListRequests</name>
    <message>
        <source>There is no such state of an item.</source>
        <translation>Einen solchen Zustand eines Elements gibt es nicht.</translation>
    </message>
</context>
<context>
    <name>LoadingTrouble</name>
    <message>
        <source>The list of items can only be read.</source>
        <translation>Die Liste der Elemente kann nur gelesen werden.</translation>
    </message>
    <message>
        <source>The list of items could not be read.</source>
        <translation>Die Liste der Elemente konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The list of groups can only be read.</source>
        <translation>Die Liste der Gruppen kann nur gelesen werden.</translation>
    </message>
    <message>
        <source>The list of groups could not be read.</source>
        <translation>Die Liste der Gruppen konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The list as it was on %1 was loaded instead (%2). What was hidden or brought back since then is found by restoring the folders that it lay in.</source>
        <translation>Stattdessen wurde die Liste mit dem Stand von %1 geladen (%2). Was seither verborgen oder zurückgeholt wurde, wird gefunden, wenn Sie die Ordner durchsuchen lassen, in denen es lag.</translation>
    </message>
    <message>
        <source>The groups as they were on %1 were loaded instead (%2).</source>
        <translation>Stattdessen wurden die Gruppen mit dem Stand von %1 geladen (%2).</translation>
    </message>
    <message>
        <source>It can be looked at, but not changed.</source>
        <translation>Sie kann angesehen, aber nicht geändert werden.</translation>
    </message>
    <message>
        <source>No earlier copy of it could be read. Hidden items are found again by restoring the folders that they lie in.</source>
        <translation>Keine frühere Kopie konnte gelesen werden. Verborgene Elemente werden wieder gefunden, wenn Sie die Ordner durchsuchen lassen, in denen sie liegen.</translation>
    </message>
    <message>
        <source>No earlier copy of it could be read. The groups that Veilkeep begins with were made anew; no item is lost.</source>
        <translation>Keine frühere Kopie konnte gelesen werden. Die Gruppen, mit denen Veilkeep beginnt, wurden neu angelegt; kein Element ist verloren.</translation>
    </message>
    <message>
        <source>The list cannot be saved, and nothing can be hidden, as long as it is there.</source>
        <translation>Solange sie da ist, kann die Liste nicht gesichert und nichts verborgen werden.</translation>
    </message>
    <message>
        <source>The list cannot be saved as long as it is there.</source>
        <translation>Solange sie da ist, kann die Liste nicht gesichert werden.</translation>
    </message>
    <message>
        <source>The file stays as it is: nothing is saved to it.</source>
        <translation>Die Datei bleibt, wie sie ist: Nichts wird in ihr gesichert.</translation>
    </message>
    <message>
        <source>When the list is saved next, the file is kept beside it under a name that begins with %1.</source>
        <translation>Wenn die Liste das nächste Mal gesichert wird, bleibt die Datei daneben erhalten, unter einem Namen, der mit %1 beginnt.</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>MainMenu</name>
    <message>
        <source>Add Items…</source>
        <translation>Elemente hinzufügen…</translation>
    </message>
    <message>
        <source>Find Hidden Items…</source>
        <translation>Verborgene Elemente suchen…</translation>
    </message>
    <message>
        <source>Find Inconsistent Items</source>
        <translation>Unstimmige Elemente suchen</translation>
    </message>
    <message>
        <source>Add Group</source>
        <translation>Gruppe hinzufügen</translation>
    </message>
    <message>
        <source>Remove Group</source>
        <translation>Gruppe entfernen</translation>
    </message>
    <message>
        <source>Edit Group…</source>
        <translation>Gruppe bearbeiten…</translation>
    </message>
    <message>
        <source>Remove Item from List</source>
        <translation>Element aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Open With</source>
        <translation>Öffnen mit</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Remove From List</source>
        <translation>Aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Remove Item</source>
        <translation>Element entfernen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Verbergen</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>Zurückholen</translation>
    </message>
    <message>
        <source>Quick Preview</source>
        <translation>Schnelle Vorschau</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Hide Group</source>
        <translation>Gruppe verbergen</translation>
    </message>
    <message>
        <source>Unhide Group</source>
        <translation>Gruppe zeigen</translation>
    </message>
    <message>
        <source>Hide AutoHide Groups</source>
        <translation>AutoHide-Gruppen verbergen</translation>
    </message>
    <message>
        <source>Show Info</source>
        <translation>Infos einblenden</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Verborgene</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Sichtbare</translation>
    </message>
    <message>
        <source>Broken</source>
        <translation>Defekte</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Set Password</source>
        <translation>Passwort festlegen</translation>
    </message>
    <message>
        <source>Show %1…</source>
        <translation>%1 zeigen…</translation>
    </message>
    <message>
        <source>%1 Help</source>
        <translation>Hilfe zu %1</translation>
    </message>
    <message>
        <source>Forum</source>
        <translation>Forum</translation>
    </message>
    <message>
        <source>Support Center</source>
        <translation>Unterstützung</translation>
    </message>
    <message>
        <source>Send Feedback…</source>
        <translation>Rückmeldung senden…</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Aktualisierungen suchen…</translation>
    </message>
    <message>
        <source>Preferences…</source>
        <translation>Einstellungen…</translation>
    </message>
    <message>
        <source>About %1</source>
        <translation>Über %1</translation>
    </message>
    <message>
        <source>Quit %1</source>
        <translation>%1 beenden</translation>
    </message>
    <message>
        <source>Show AutoHide Groups</source>
        <translation>AutoHide-Gruppen zeigen</translation>
    </message>
    <message>
        <source>Hide %1</source>
        <translation>%1 ausblenden</translation>
    </message>
</context>
<context>
    <name>OpenPanels</name>
    <message>
        <source>Locate Item</source>
        <translation>Element suchen</translation>
    </message>
    <message>
        <source>Choose</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Restore Folders</source>
        <translation>Ordner durchsuchen</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Durchsuchen</translation>
    </message>
    <message>
        <source>Add Items</source>
        <translation>Elemente hinzufügen</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Hinzufügen</translation>
    </message>
    <message>
        <source>Choose Image</source>
        <translation>Bild wählen</translation>
    </message>
</context>
<context>
    <name>PasswordManager</name>
    <message>
        <source>Enter your %1 password:</source>
        <translation>Geben Sie Ihr Passwort für %1 ein:</translation>
    </message>
</context>
<context>
    <name>ReportWindow</name>
    <message>
        <source>Problem report</source>
        <translation>Problembericht</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>It stays on this computer until you pass it on; please read it before:</source>
        <translation>Er bleibt auf diesem Computer, bis Sie ihn weitergeben; bitte lesen Sie ihn vorher:</translation>
    </message>
</context>
<context>
    <name>RequestRoute</name>
    <message>
        <source>this program is missing or may not be run; please install Veilkeep anew</source>
        <translation>dieses Programm fehlt oder darf nicht gestartet werden; bitte installieren Sie Veilkeep neu</translation>
    </message>
    <message>
        <source>another process owns the list and did not answer</source>
        <translation>ein anderer Prozess hat die Liste und hat nicht geantwortet</translation>
    </message>
    <message>
        <source>interrupted; nothing was done</source>
        <translation>unterbrochen; nichts wurde getan</translation>
    </message>
    <message>
        <source>the application owns the list and did not answer</source>
        <translation>die Anwendung hat die Liste und hat nicht geantwortet</translation>
    </message>
    <message>
        <source>the application ended before it was through</source>
        <translation>die Anwendung endete, bevor sie fertig war</translation>
    </message>
</context>
<context>
    <name>RequestRunner</name>
    <message>
        <source>This request is not understood.</source>
        <translation>Diese Anfrage wird nicht verstanden.</translation>
    </message>
    <message>
        <source>the list could not be saved: %1</source>
        <translation>die Liste konnte nicht gesichert werden: %1</translation>
    </message>
    <message>
        <source>the groups could not be saved: %1</source>
        <translation>die Gruppen konnten nicht gesichert werden: %1</translation>
    </message>
    <message>
        <source>The list was written by a newer version of Veilkeep and cannot be changed.</source>
        <translation>Die Liste wurde von einer neueren Version von Veilkeep geschrieben und kann nicht geändert werden.</translation>
    </message>
    <message>
        <source>The groups were written by a newer version of Veilkeep and cannot be changed.</source>
        <translation>Die Gruppen wurden von einer neueren Version von Veilkeep geschrieben und können nicht geändert werden.</translation>
    </message>
    <message>
        <source>The password was not given.</source>
        <translation>Das Passwort wurde nicht eingegeben.</translation>
    </message>
    <message>
        <source>Veilkeep asks for its password in a window.</source>
        <translation>Veilkeep fragt in einem Fenster nach seinem Passwort.</translation>
    </message>
</context>
<context>
    <name>RequestService</name>
    <message>
        <source>Only the same user&apos;s programs may ask for this.</source>
        <translation>Nur Programme desselben Benutzers dürfen darum bitten.</translation>
    </message>
    <message>
        <source>One request after the other, please.</source>
        <translation>Bitte eine Anfrage nach der anderen.</translation>
    </message>
    <message>
        <source>Too many requests are waiting.</source>
        <translation>Zu viele Anfragen warten.</translation>
    </message>
    <message>
        <source>An option of the request is of an unknown kind.</source>
        <translation>Eine Option der Anfrage ist von unbekannter Art.</translation>
    </message>
    <message>
        <source>The list stays with this program.</source>
        <translation>Die Liste bleibt bei diesem Programm.</translation>
    </message>
</context>
<context>
    <name>RequestWork</name>
    <message>
        <source>There is no such group.</source>
        <translation>Eine solche Gruppe gibt es nicht.</translation>
    </message>
    <message>
        <source>This request is not understood.</source>
        <translation>Diese Anfrage wird nicht verstanden.</translation>
    </message>
</context>
<context>
    <name>RunHide</name>
    <message>
        <source>Only files and folders of this computer can be hidden.</source>
        <translation>Nur Dateien und Ordner dieses Rechners können verborgen werden.</translation>
    </message>
    <message>
        <source>No item was chosen.</source>
        <translation>Es wurde kein Element gewählt.</translation>
    </message>
</context>
<context>
    <name>SearchRequests</name>
    <message>
        <source>Searching for inconsistent files. Please wait...</source>
        <translation>Unstimmige Dateien werden gesucht. Bitte warten…</translation>
    </message>
    <message>
        <source>%1: The volume of this item is not there.</source>
        <translation>%1: Der Datenträger dieses Elements fehlt.</translation>
    </message>
    <message>
        <source>interrupted; not everything was searched</source>
        <translation>unterbrochen; nicht alles wurde durchsucht</translation>
    </message>
    <message>
        <source>The item is not in the list.</source>
        <translation>Das Element steht nicht in der Liste.</translation>
    </message>
    <message>
        <source>The item is not missing: it is at %1.</source>
        <translation>Das Element fehlt nicht: Es liegt in %1.</translation>
    </message>
    <message>
        <source>The item could not be added.</source>
        <translation>Das Element konnte nicht hinzugefügt werden.</translation>
    </message>
    <message>
        <source>directories that could not be looked into: %1</source>
        <translation>Ordner, die nicht durchsucht werden konnten: %1</translation>
    </message>
    <message>
        <source>items taken over: %1</source>
        <translation>übernommene Elemente: %1</translation>
    </message>
</context>
<context>
    <name>SoftwareUpdater</name>
    <message>
        <source>The package service gave no reason.</source>
        <translation>Der Paketdienst nannte keinen Grund.</translation>
    </message>
    <message>
        <source>Updates could not be looked for.</source>
        <translation>Nach Aktualisierungen konnte nicht gesucht werden.</translation>
    </message>
    <message>
        <source>It offers the package in version %1.</source>
        <translation>Er bietet das Paket in Version %1 an.</translation>
    </message>
    <message>
        <source>This copy of %1 was not installed as a package.</source>
        <translation>Diese Kopie von %1 wurde nicht als Paket installiert.</translation>
    </message>
    <message>
        <source>The system&apos;s package service cannot tell of newer versions of it.</source>
        <translation>Der Paketdienst des Systems kann nichts von neueren Versionen wissen.</translation>
    </message>
    <message>
        <source>%1 is up to date.</source>
        <translation>%1 ist aktuell.</translation>
    </message>
    <message>
        <source>Version %1 is the newest one that the package sources of this system offer.</source>
        <translation>Version %1 ist die neueste, die die Paketquellen dieses Systems anbieten.</translation>
    </message>
    <message>
        <source>There is a new version of %1.</source>
        <translation>Es gibt eine neue Version von %1.</translation>
    </message>
    <message>
        <source>Version %1 can be installed, you have version %2. It comes with the other updates of your system.</source>
        <translation>Version %1 kann installiert werden, Sie haben Version %2. Sie kommt mit den anderen Aktualisierungen Ihres Systems.</translation>
    </message>
    <message>
        <source>There is no package service on this system.</source>
        <translation>Auf diesem System gibt es keinen Paketdienst.</translation>
    </message>
    <message>
        <source>Without PackageKit %1 cannot look for updates. They come with the other updates of your system.</source>
        <translation>Ohne PackageKit kann %1 nicht nach Aktualisierungen suchen. Sie kommen mit den anderen Aktualisierungen Ihres Systems.</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>Looking for updates…</source>
        <translation>Aktualisierungen werden gesucht…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>ValueFormatting</name>
    <message>
        <source>Unknown</source>
        <translation>Unbekannt</translation>
    </message>
    <message>
        <source>N/A</source>
        <translation>k. A.</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 KB</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 KB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message numerus="yes">
        <source> for %n items</source>
        <translation>
            <numerusform> für %n Element</numerusform>
            <numerusform> für %n Elemente</numerusform>
        </translation>
    </message>
    <message>
        <source>Info</source>
        <translation>Infos</translation>
    </message>
</context>
<context>
    <name>veilkeep::ADApp</name>
    <message>
        <source>%1 is running, but does not answer.</source>
        <translation>%1 läuft bereits, antwortet aber nicht.</translation>
    </message>
    <message>
        <source>Please wait a moment, or end it and start it again.</source>
        <translation>Bitte warten Sie einen Moment, oder beenden Sie es und starten Sie es neu.</translation>
    </message>
    <message>
        <source>Another program is using the list of %1.</source>
        <translation>Ein anderes Programm benutzt die Liste von %1.</translation>
    </message>
    <message>
        <source>Only one program at a time can work on it. Please end the other one first.</source>
        <translation>Nur ein Programm zur Zeit kann mit ihr arbeiten. Bitte beenden Sie zuerst das andere.</translation>
    </message>
    <message>
        <source>The list of %1 cannot be used.</source>
        <translation>Die Liste von %1 kann nicht benutzt werden.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Some errors have been occured while hiding files</source>
        <translation>Beim Verbergen sind Fehler aufgetreten</translation>
    </message>
    <message>
        <source> Hide Info</source>
        <translation>Infos ausblenden</translation>
    </message>
    <message>
        <source>Show Info</source>
        <translation>Infos einblenden</translation>
    </message>
    <message>
        <source>Hide info pane</source>
        <translation>Infobereich ausblenden</translation>
    </message>
    <message>
        <source>Show info pane</source>
        <translation>Infobereich einblenden</translation>
    </message>
    <message>
        <source>Remove Item from List</source>
        <translation>Element aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Remove Item from Group</source>
        <translation>Element aus der Gruppe entfernen</translation>
    </message>
    <message>
        <source>Return to Veilkeep</source>
        <translation>Zurück zu Veilkeep</translation>
    </message>
    <message>
        <source>Force Quit</source>
        <translation>Trotzdem beenden</translation>
    </message>
    <message>
        <source>%1 goes on without a window.</source>
        <translation>%1 läuft ohne Fenster weiter.</translation>
    </message>
    <message>
        <source>This desktop has no place for the program&apos;s icon. Start %1 once more to see its window again; choose Quit in its menu to end it.</source>
        <translation>Dieser Desktop hat keinen Platz für das Symbol des Programms. Starten Sie %1 noch einmal, um das Fenster wieder zu sehen; mit „Beenden“ in dessen Menü endet es.</translation>
    </message>
    <message>
        <source>The guide could not be opened.</source>
        <translation>Die Anleitung konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>No program was found that shows it. It lies at %1.</source>
        <translation>Es wurde kein Programm gefunden, das sie anzeigt. Sie liegt in %1.</translation>
    </message>
    <message>
        <source>The application could not be started.</source>
        <translation>Das Programm konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The item could not be shown.</source>
        <translation>Das Element konnte nicht gezeigt werden.</translation>
    </message>
    <message>
        <source>Feedback</source>
        <translation>Rückmeldung</translation>
    </message>
    <message>
        <source>The problem report could not be written.</source>
        <translation>Der Problembericht konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>The problem report could not be opened.</source>
        <translation>Der Problembericht konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>The problem report could not be deleted.</source>
        <translation>Der Problembericht konnte nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>The last changes could not be saved.</source>
        <translation>Die letzten Änderungen konnten nicht gesichert werden.</translation>
    </message>
    <message>
        <source>Quit Anyway</source>
        <translation>Trotzdem beenden</translation>
    </message>
    <message>
        <source>Something went wrong, and a problem report was written.</source>
        <translation>Etwas ist schiefgegangen, und ein Problembericht wurde geschrieben.</translation>
    </message>
    <message>
        <source>A report on this program and its desktop was written, for you to add what you want to say.</source>
        <translation>Ein Bericht über dieses Programm und seine Arbeitsumgebung wurde geschrieben, dem Sie hinzufügen können, was Sie sagen möchten.</translation>
    </message>
    <message>
        <source>Only files and folders of this computer can be shown.</source>
        <translation>Nur Dateien und Ordner dieses Rechners können gezeigt werden.</translation>
    </message>
    <message>
        <source>Change Password</source>
        <translation>Passwort ändern</translation>
    </message>
    <message>
        <source>Set Password</source>
        <translation>Passwort festlegen</translation>
    </message>
    <message>
        <source>Change application password</source>
        <translation>Das Passwort der Anwendung ändern</translation>
    </message>
    <message>
        <source>Set application password</source>
        <translation>Ein Passwort für die Anwendung festlegen</translation>
    </message>
    <message>
        <source>%1 ended unexpectedly the last time, and a problem report was written.</source>
        <translation>%1 wurde beim letzten Mal unerwartet beendet, und ein Problembericht wurde geschrieben.</translation>
    </message>
    <message>
        <source>The settings were damaged and begin anew.</source>
        <translation>Die Einstellungen waren beschädigt und beginnen von vorn.</translation>
    </message>
    <message>
        <source>What they were is kept in %1. Where a password was set, please set it again.</source>
        <translation>Was sie waren, liegt in %1. War ein Passwort festgelegt, legen Sie es bitte neu fest.</translation>
    </message>
    <message>
        <source>The settings are damaged and count as not set.</source>
        <translation>Die Einstellungen sind beschädigt und gelten als nicht festgelegt.</translation>
    </message>
</context>
<context>
    <name>veilkeep::AlertWindow</name>
    <message>
        <source>Applications</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Do not ask again</source>
        <translation>Nicht mehr fragen</translation>
    </message>
</context>
<context>
    <name>veilkeep::ApplicationPanel</name>
    <message>
        <source>Choose Application</source>
        <translation>Programm auswählen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Applications</source>
        <translation>Programme</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>veilkeep::EmptyTableNotice</name>
    <message>
        <source>No items match “%1”.</source>
        <translation>Kein Element passt zu „%1“.</translation>
    </message>
    <message>
        <source>Nothing is broken. All items are where they should be.</source>
        <translation>Nichts ist defekt. Alle Elemente sind an ihrem Platz.</translation>
    </message>
    <message>
        <source>No items are hidden.</source>
        <translation>Keine Elemente sind verborgen.</translation>
    </message>
    <message>
        <source>No items are visible.</source>
        <translation>Keine Elemente sind sichtbar.</translation>
    </message>
    <message>
        <source>Drop files and folders here</source>
        <translation>Dateien und Ordner hier ablegen</translation>
    </message>
    <message>
        <source>Add Items…</source>
        <translation>Elemente hinzufügen…</translation>
    </message>
    <message>
        <source>Clear Search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Show All Items</source>
        <translation>Alle Elemente zeigen</translation>
    </message>
</context>
<context>
    <name>veilkeep::ErrorTable</name>
    <message>
        <source>Errors</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>veilkeep::ErrorTableModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesContextMenu</name>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Fix…</source>
        <translation>Wiederfinden…</translation>
    </message>
    <message>
        <source>Unhide</source>
        <translation>Zurückholen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Verbergen</translation>
    </message>
    <message>
        <source>Open With</source>
        <translation>Öffnen mit</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>In der Dateiverwaltung zeigen</translation>
    </message>
    <message>
        <source>Quick Preview</source>
        <translation>Schnelle Vorschau</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesTableDelegate</name>
    <message>
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesTableModel</name>
    <message>
        <source>Searching…</source>
        <translation>Wird gesucht…</translation>
    </message>
    <message>
        <source>Disk not connected</source>
        <translation>Datenträger fehlt</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>hidden</source>
        <translation>verborgen</translation>
    </message>
    <message>
        <source>visible</source>
        <translation>sichtbar</translation>
    </message>
    <message>
        <source>%1, %2, %3, %4</source>
        <comment>name, place, size, state</comment>
        <translation>%1, %2, %3, %4</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilesTableView</name>
    <message>
        <source>Items</source>
        <translation>Elemente</translation>
    </message>
</context>
<context>
    <name>veilkeep::FilterBar</name>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>All</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Verborgene</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Sichtbare</translation>
    </message>
    <message>
        <source>Broken</source>
        <translation>Defekte</translation>
    </message>
    <message>
        <source>All items</source>
        <translation>Alle Elemente</translation>
    </message>
    <message>
        <source>Hidden items</source>
        <translation>Verborgene Elemente</translation>
    </message>
    <message>
        <source>Visible items</source>
        <translation>Sichtbare Elemente</translation>
    </message>
    <message>
        <source>Broken items</source>
        <translation>Defekte Elemente</translation>
    </message>
</context>
<context>
    <name>veilkeep::FolderModel</name>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
</context>
<context>
    <name>veilkeep::GeneralPage</name>
    <message>
        <source>Start:</source>
        <translation>Start:</translation>
    </message>
    <message>
        <source>Launch %1 at login</source>
        <translation>%1 bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>Zeigen:</translation>
    </message>
    <message>
        <source>%1 in the taskbar</source>
        <translation>%1 in der Taskleiste</translation>
    </message>
    <message>
        <source>Icon in the panel</source>
        <translation>Symbol in der Kontrollleiste</translation>
    </message>
    <message>
        <source>%1 needs to be relaunched for this to take effect.</source>
        <translation>%1 muss neu gestartet werden, damit das wirkt.</translation>
    </message>
    <message>
        <source>File managers:</source>
        <translation>Dateiverwaltung:</translation>
    </message>
    <message>
        <source>“Hide with %1” and “Show in %1” in their menus</source>
        <translation>„Mit %1 verbergen“ und „In %1 zeigen“ in den Menüs</translation>
    </message>
    <message>
        <source>Items:</source>
        <translation>Elemente:</translation>
    </message>
    <message>
        <source>Allow those that need administrator rights</source>
        <translation>Auch solche, die Verwalterrechte brauchen</translation>
    </message>
    <message>
        <source>Remove their traces from lists of recent files while hiding</source>
        <translation>Beim Verbergen ihre Spuren aus Listen zuletzt benutzter Dateien entfernen</translation>
    </message>
    <message>
        <source>Ask before removing them from the list</source>
        <translation>Vor dem Entfernen aus der Liste fragen</translation>
    </message>
    <message>
        <source>Sounds:</source>
        <translation>Klänge:</translation>
    </message>
    <message>
        <source>Play sounds</source>
        <translation>Klänge abspielen</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupDelegate</name>
    <message>
        <source>Name of the group</source>
        <translation>Name der Gruppe</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupEditSheet</name>
    <message>
        <source>&amp;AutoHide</source>
        <translation>&amp;AutoHide</translation>
    </message>
    <message>
        <source>Edit Group</source>
        <translation>Gruppe bearbeiten</translation>
    </message>
    <message>
        <source>Select Existing Icons</source>
        <translation>Vorhandene Symbole</translation>
    </message>
    <message>
        <source>Name of the group</source>
        <translation>Name der Gruppe</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>&amp;Icon:</source>
        <translation>&amp;Symbol:</translation>
    </message>
    <message>
        <source>Hide this group whenever you leave the computer</source>
        <translation>Diese Gruppe verbergen, sobald Sie den Rechner verlassen</translation>
    </message>
    <message>
        <source>&amp;Choose Image…</source>
        <translation>&amp;Bild wählen…</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Reset</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>Go back and enter another name. Nothing has been changed.</source>
        <translation>Gehen Sie zurück und geben Sie einen anderen Namen ein. Nichts wurde geändert.</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupPanel</name>
    <message>
        <source>Hide the group</source>
        <translation>Gruppe verbergen</translation>
    </message>
    <message>
        <source>AutoHide</source>
        <translation>AutoHide</translation>
    </message>
    <message>
        <source>Hide this group whenever you leave the computer</source>
        <translation>Diese Gruppe verbergen, sobald Sie den Rechner verlassen</translation>
    </message>
    <message>
        <source>Add a group</source>
        <translation>Gruppe hinzufügen</translation>
    </message>
    <message>
        <source>Remove the group</source>
        <translation>Gruppe entfernen</translation>
    </message>
    <message>
        <source>Edit the group</source>
        <translation>Gruppe bearbeiten</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Verborgen</translation>
    </message>
    <message>
        <source>Shown</source>
        <translation>Sichtbar</translation>
    </message>
</context>
<context>
    <name>veilkeep::GroupsView</name>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten…</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>veilkeep::ImageWell</name>
    <message>
        <source>Icon</source>
        <translation>Symbol</translation>
    </message>
    <message>
        <source>An image can be dropped here</source>
        <translation>Hier kann ein Bild abgelegt werden</translation>
    </message>
    <message>
        <source>Drop an image here</source>
        <translation>Legen Sie hier ein Bild ab</translation>
    </message>
</context>
<context>
    <name>veilkeep::InfoContents</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Erstellt</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Gruppe</translation>
    </message>
</context>
<context>
    <name>veilkeep::InfoPane</name>
    <message>
        <source>Nothing selected</source>
        <translation>Nichts ausgewählt</translation>
    </message>
</context>
<context>
    <name>veilkeep::ItemPanel</name>
    <message>
        <source>Enclosing Folder</source>
        <translation>Übergeordneter Ordner</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Files and folders</source>
        <translation>Dateien und Ordner</translation>
    </message>
    <message>
        <source>Show hidden items</source>
        <translation>Versteckte Dateien zeigen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>This folder cannot be read: %1</source>
        <translation>Dieser Ordner kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>There is nothing at this place.</source>
        <translation>An diesem Ort ist nichts.</translation>
    </message>
    <message>
        <source>An item of this kind cannot be chosen here.</source>
        <translation>Ein Element dieser Art kann hier nicht gewählt werden.</translation>
    </message>
</context>
<context>
    <name>veilkeep::MainMenu</name>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Items to Show</source>
        <translation>Gezeigte Elemente</translation>
    </message>
    <message>
        <source>Sort By</source>
        <translation>Sortieren nach</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Move to Group</source>
        <translation>In Gruppe verschieben</translation>
    </message>
</context>
<context>
    <name>veilkeep::MainToolBar</name>
    <message>
        <source>Toolbar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Clear Search</source>
        <translation>Suche leeren</translation>
    </message>
</context>
<context>
    <name>veilkeep::MessageBar</name>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Dismiss this message</source>
        <translation>Diese Meldung schließen</translation>
    </message>
    <message>
        <source>Dismiss</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>veilkeep::PackageKitUpdates</name>
    <message>
        <source>The package service ended.</source>
        <translation>Der Paketdienst wurde beendet.</translation>
    </message>
</context>
<context>
    <name>veilkeep::PasswordPage</name>
    <message>
        <source>⇪ Caps Lock is on</source>
        <translation>⇪ Feststelltaste ist aktiv</translation>
    </message>
    <message>
        <source>Only plain letters, digits and signs protect.</source>
        <translation>Nur einfache Buchstaben, Ziffern und Zeichen schützen.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Set the password that opens %1</source>
        <translation>Das Passwort festlegen, das %1 öffnet</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Passwort:</translation>
    </message>
    <message>
        <source>Once more:</source>
        <translation>Noch einmal:</translation>
    </message>
    <message>
        <source>The two entries differ.</source>
        <translation>Die beiden Eingaben sind verschieden.</translation>
    </message>
    <message>
        <source>The password is empty.</source>
        <translation>Das Passwort ist leer.</translation>
    </message>
    <message>
        <source>Change the password that opens %1</source>
        <translation>Das Passwort ändern, das %1 öffnet</translation>
    </message>
    <message>
        <source>Old password:</source>
        <translation>Altes Passwort:</translation>
    </message>
    <message>
        <source>New password:</source>
        <translation>Neues Passwort:</translation>
    </message>
    <message>
        <source>The old password is wrong.</source>
        <translation>Das alte Passwort ist falsch.</translation>
    </message>
    <message>
        <source>The two new entries differ.</source>
        <translation>Die beiden neuen Eingaben sind verschieden.</translation>
    </message>
    <message>
        <source>Enter the password to switch it off</source>
        <translation>Zum Ausschalten das Passwort eingeben</translation>
    </message>
    <message>
        <source>Wrong password:</source>
        <translation>Falsches Passwort:</translation>
    </message>
    <message>
        <source>of %1 attempts used</source>
        <translation>von %1 Versuchen verbraucht</translation>
    </message>
</context>
<context>
    <name>veilkeep::PasswordPanel</name>
    <message>
        <source>Wrong password:</source>
        <translation>Falsches Passwort:</translation>
    </message>
    <message>
        <source>of %1 attempts used</source>
        <translation>von %1 Versuchen verbraucht</translation>
    </message>
    <message>
        <source>⇪ Caps Lock is on</source>
        <translation>⇪ Feststelltaste ist aktiv</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>veilkeep::PlaceList</name>
    <message>
        <source>Places</source>
        <translation>Orte</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Persönlicher Ordner</translation>
    </message>
    <message>
        <source>File System</source>
        <translation>Dateisystem</translation>
    </message>
</context>
<context>
    <name>veilkeep::PrefsController</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Security</source>
        <translation>Sicherheit</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>Aktualisierung</translation>
    </message>
    <message>
        <source>The setting could not be stored.</source>
        <translation>Die Einstellung konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>Launching at login could not be changed.</source>
        <translation>Der Start bei der Anmeldung konnte nicht geändert werden.</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>The password could not be stored.</source>
        <translation>Das Passwort konnte nicht gespeichert werden.</translation>
    </message>
</context>
<context>
    <name>veilkeep::PrefsWindow</name>
    <message>
        <source>Preferences Toolbar</source>
        <translation>Seiten der Einstellungen</translation>
    </message>
</context>
<context>
    <name>veilkeep::PreviewFrame</name>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
</context>
<context>
    <name>veilkeep::ProgressPanel</name>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Wird abgebrochen…</translation>
    </message>
</context>
<context>
    <name>veilkeep::QuickFacts</name>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>Where</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Created</source>
        <translation>Erstellt</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Hidden</source>
        <translation>Verborgen</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>Sichtbar</translation>
    </message>
</context>
<context>
    <name>veilkeep::QuickPanel</name>
    <message>
        <source>Previous item</source>
        <translation>Vorheriges Element</translation>
    </message>
    <message>
        <source>Next item</source>
        <translation>Nächstes Element</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Vorherige Seite</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Text of the item</source>
        <translation>Text des Elements</translation>
    </message>
    <message>
        <source>Nothing is selected</source>
        <translation>Nichts ist ausgewählt</translation>
    </message>
    <message>
        <source>Picture of the item</source>
        <translation>Bild des Elements</translation>
    </message>
    <message>
        <source>Quick Preview</source>
        <translation>Schnelle Vorschau</translation>
    </message>
    <message>
        <source>the beginning</source>
        <translation>der Anfang</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Seite %1 von %2</translation>
    </message>
</context>
<context>
    <name>veilkeep::Relaunching</name>
    <message>
        <source>Relaunch required</source>
        <translation>Neustart erforderlich</translation>
    </message>
    <message>
        <source>%1 needs to be relaunched for some changes to take effect</source>
        <translation>%1 muss neu gestartet werden, damit einige Änderungen wirken</translation>
    </message>
    <message>
        <source>Relaunch</source>
        <translation>Neu starten</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>%1 could not be relaunched.</source>
        <translation>%1 konnte nicht neu gestartet werden.</translation>
    </message>
    <message>
        <source>%1 could not be replaced. The former one is still there.</source>
        <translation>%1 konnte nicht ersetzt werden. Die bisherige Fassung ist noch da.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>veilkeep::SecurityPage</name>
    <message>
        <source>Password:</source>
        <translation>Passwort:</translation>
    </message>
    <message>
        <source>Require a password to open %1</source>
        <translation>Zum Öffnen von %1 ein Passwort verlangen</translation>
    </message>
    <message>
        <source>Set Password…</source>
        <translation>Passwort festlegen…</translation>
    </message>
    <message>
        <source>Change Password…</source>
        <translation>Passwort ändern…</translation>
    </message>
    <message>
        <source>Hide AutoHide groups when…</source>
        <translation>AutoHide-Gruppen verbergen, wenn…</translation>
    </message>
    <message>
        <source>the computer goes to sleep</source>
        <translation>der Rechner in den Ruhezustand geht</translation>
    </message>
    <message>
        <source>the screen is locked</source>
        <translation>der Bildschirm gesperrt wird</translation>
    </message>
    <message>
        <source>another user&apos;s session comes to the front</source>
        <translation>die Sitzung eines anderen Benutzers nach vorn kommt</translation>
    </message>
    <message>
        <source>%1 quits</source>
        <translation>%1 beendet wird</translation>
    </message>
</context>
<context>
    <name>veilkeep::StatusMenu</name>
    <message>
        <source>Groups</source>
        <translation>Gruppen</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Verbergen</translation>
    </message>
</context>
<context>
    <name>veilkeep::SummaryLine</name>
    <message>
        <source>Selection</source>
        <translation>Auswahl</translation>
    </message>
    <message>
        <source>Summary</source>
        <translation>Zusammenfassung</translation>
    </message>
    <message>
        <source>Hide Selected Items</source>
        <translation>Ausgewählte Elemente verbergen</translation>
    </message>
    <message>
        <source>Hides the selected items, or shows them again</source>
        <translation>Verbirgt die ausgewählten Elemente oder holt sie zurück</translation>
    </message>
    <message>
        <source>1 item</source>
        <translation>1 Element</translation>
    </message>
    <message numerus="yes">
        <source>%Ln items</source>
        <translation>
            <numerusform>%Ln Element</numerusform>
            <numerusform>%Ln Elemente</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hidden</source>
        <translation>
            <numerusform>%Ln verborgen</numerusform>
            <numerusform>%Ln verborgen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln broken</source>
        <translation>
            <numerusform>%Ln defekt</numerusform>
            <numerusform>%Ln defekt</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veilkeep::UpdatePage</name>
    <message>
        <source>Version of %1:</source>
        <translation>Version von %1:</translation>
    </message>
    <message>
        <source>Last check:</source>
        <translation>Letzte Suche:</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>Jetzt suchen</translation>
    </message>
</context>
<context>
    <name>veilkeep::VeilkeepWindow</name>
    <message>
        <source>Width of the groups</source>
        <translation>Breite der Gruppen</translation>
    </message>
    <message>
        <source>Width of the info pane</source>
        <translation>Breite des Infobereichs</translation>
    </message>
</context>
<context>
    <name>veilkeep::WindowMessages</name>
    <message>
        <source>The list of items was saved: %1</source>
        <translation>Die Liste der Elemente wurde gesichert: %1</translation>
    </message>
    <message>
        <source>The list of items could not be saved: %1</source>
        <translation>Die Liste der Elemente konnte nicht gesichert werden: %1</translation>
    </message>
    <message>
        <source>The groups were saved: %1</source>
        <translation>Die Gruppen wurden gesichert: %1</translation>
    </message>
    <message>
        <source>The groups could not be saved: %1</source>
        <translation>Die Gruppen konnten nicht gesichert werden: %1</translation>
    </message>
    <message>
        <source>1 item could not be hidden automatically and is still visible.</source>
        <translation>1 Element konnte nicht automatisch verborgen werden und ist noch sichtbar.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln items could not be hidden automatically and are still visible.</source>
        <translation>
            <numerusform>%Ln Element konnte nicht automatisch verborgen werden und ist noch sichtbar.</numerusform>
            <numerusform>%Ln Elemente konnten nicht automatisch verborgen werden und sind noch sichtbar.</numerusform>
        </translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Zeigen</translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln Ordner</numerusform>
            <numerusform>%Ln Ordnern</numerusform>
        </translation>
    </message>
    <message>
        <source>No hidden items were found in %1.</source>
        <translation>In %1 wurden keine verborgenen Elemente gefunden.</translation>
    </message>
    <message>
        <source>1 hidden item was found in %1.</source>
        <translation>In %1 wurde 1 verborgenes Element gefunden.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln hidden items were found in %1.</source>
        <translation>
            <numerusform>In %1 wurde %Ln verborgenes Element gefunden.</numerusform>
            <numerusform>In %1 wurden %Ln verborgene Elemente gefunden.</numerusform>
        </translation>
    </message>
    <message>
        <source>1 folder could not be read.</source>
        <translation>1 Ordner konnte nicht gelesen werden.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders could not be read.</source>
        <translation>
            <numerusform>%Ln Ordner konnte nicht gelesen werden.</numerusform>
            <numerusform>%Ln Ordner konnten nicht gelesen werden.</numerusform>
        </translation>
    </message>
    <message>
        <source>The search did not reach its end: %1</source>
        <translation>Die Suche kam nicht zum Ende: %1</translation>
    </message>
</context>
</TS>
