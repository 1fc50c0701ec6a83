<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>tollbeam::AlertDialogs</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>tollbeam::DailySummaryView</name>
    <message>
        <source>Daily summary</source>
        <translation>Tagesübersicht</translation>
    </message>
    <message>
        <source>%1%</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>%1–%2%</source>
        <translation>%1–%2&#xa0;%</translation>
    </message>
    <message>
        <source>%1: average %2, range %3, charging %4</source>
        <translation>%1: im Mittel %2, von/bis %3, geladen %4</translation>
    </message>
    <message>
        <source>%1: average %2, range %3, no charging</source>
        <translation>%1: im Mittel %2, von/bis %3, nicht geladen</translation>
    </message>
    <message>
        <source>Day</source>
        <translation>Tag</translation>
    </message>
    <message>
        <source>Avg</source>
        <translation>Ø</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>Bereich</translation>
    </message>
    <message>
        <source>Charging</source>
        <translation>Laden</translation>
    </message>
</context>
<context>
    <name>tollbeam::GeneralSection</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Export History as CSV…</source>
        <translation>Verlauf als CSV exportieren …</translation>
    </message>
    <message>
        <source>Reset History…</source>
        <translation>Verlauf zurücksetzen …</translation>
    </message>
    <message>
        <source>Notifications need Tollbeam to run as an app bundle (see make_app.sh). Run from the command line, alerts cannot be delivered.</source>
        <translation>Für Mitteilungen muss Tollbeam als App-Bundle laufen (siehe make_app.sh). Von der Befehlszeile gestartet, kann es keine Erinnerungen zustellen.</translation>
    </message>
    <message>
        <source>Launch at Login</source>
        <translation>Beim Anmelden starten</translation>
    </message>
    <message>
        <source>Could not change Launch at Login: %1</source>
        <translation>„Beim Anmelden starten“ konnte nicht geändert werden: %1</translation>
    </message>
    <message>
        <source>Reset history?</source>
        <translation>Verlauf zurücksetzen?</translation>
    </message>
    <message>
        <source>This deletes all saved battery samples used for the chart.</source>
        <translation>Damit werden alle gespeicherten Messwerte für das Diagramm gelöscht.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>tollbeam::HistoryChart</name>
    <message>
        <source>%1%</source>
        <translation>%1&#xa0;%</translation>
    </message>
    <message>
        <source>Last 24 hours: %1% to %2%, now %3%.</source>
        <translation>Letzte 24 Stunden: %1&#xa0;% bis %2&#xa0;%, jetzt %3&#xa0;%.</translation>
    </message>
    <message>
        <source>Last 24 hours: %1% to %2%.</source>
        <translation>Letzte 24 Stunden: %1&#xa0;% bis %2&#xa0;%.</translation>
    </message>
    <message>
        <source>Last %1 days: %2% to %3%, now %4%.</source>
        <translation>Letzte %1 Tage: %2&#xa0;% bis %3&#xa0;%, jetzt %4&#xa0;%.</translation>
    </message>
    <message>
        <source>Last %1 days: %2% to %3%.</source>
        <translation>Letzte %1 Tage: %2&#xa0;% bis %3&#xa0;%.</translation>
    </message>
    <message>
        <source>Charge history</source>
        <translation>Ladeverlauf</translation>
    </message>
    <message>
        <source>Collecting history… a graph appears after a few minutes.</source>
        <translation>Verlauf wird gesammelt … nach einigen Minuten erscheint ein Diagramm.</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>weekday and time</comment>
        <translation>%1&#xa0;%2</translation>
    </message>
</context>
<context>
    <name>tollbeam::NoBattery</name>
    <message>
        <source>This Mac does not report a battery, so Tollbeam stays quiet.</source>
        <translation>Dieser Mac meldet keinen Akku, deshalb bleibt Tollbeam still.</translation>
    </message>
</context>
<context>
    <name>tollbeam::PopoverView</name>
    <message>
        <source>Cycle count</source>
        <translation>Ladezyklen</translation>
    </message>
    <message>
        <source>Tollbeam can only remind you. A Mac app cannot stop the charger.</source>
        <translation>Tollbeam kann nur erinnern. Eine Mac-App kann das Laden nicht anhalten.</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Alerts snoozed until %1</source>
        <translation>Pausiert bis %1</translation>
    </message>
    <message>
        <source>%1 of 1000</source>
        <translation>%1 von 1000</translation>
    </message>
    <message>
        <source>Battery health</source>
        <translation>Akkuzustand</translation>
    </message>
    <message>
        <source>Temperature</source>
        <translation>Temperatur</translation>
    </message>
    <message>
        <source>Power in</source>
        <translation>Leistung ein</translation>
    </message>
    <message>
        <source>Power out</source>
        <translation>Leistung aus</translation>
    </message>
    <message>
        <source>Adapter</source>
        <translation>Netzteil</translation>
    </message>
    <message>
        <source>Plugged in for %1</source>
        <translation>Am Netz seit %1</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>24 hours</source>
        <translation>24 Stunden</translation>
    </message>
    <message>
        <source>7 days</source>
        <translation>7 Tage</translation>
    </message>
    <message>
        <source>%1% · %2</source>
        <translation>%1 % · %2</translation>
    </message>
</context>
<context>
    <name>tollbeam::RingView</name>
    <message>
        <source>Charge, %1%</source>
        <translation>Ladung, %1&#xa0;%</translation>
    </message>
</context>
<context>
    <name>tollbeam::Row</name>
    <message>
        <source>%1: %2</source>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>tollbeam::SettingsView</name>
    <message>
        <source>Charge limit</source>
        <translation>Ladegrenze</translation>
    </message>
    <message>
        <source>Alert when charging reaches %1%</source>
        <translation>Erinnern, wenn der Ladestand %1 % erreicht</translation>
    </message>
    <message>
        <source>Repeat every 5 minutes, up to 3 times</source>
        <translation>Alle 5 Minuten wiederholen, bis zu 3-mal</translation>
    </message>
    <message>
        <source>Low battery</source>
        <translation>Akku schwach</translation>
    </message>
    <message>
        <source>Alert on battery at %1% or less</source>
        <translation>Erinnern bei %1 % oder weniger</translation>
    </message>
    <message>
        <source>Suggest Low Power Mode</source>
        <translation>Stromsparmodus vorschlagen</translation>
    </message>
    <message>
        <source>When on battery below %1%</source>
        <translation>Im Akkubetrieb unter %1 %</translation>
    </message>
    <message>
        <source>Plugged in too long</source>
        <translation>Zu lange am Netz</translation>
    </message>
    <message>
        <source>Alert after %1 h plugged in above the charge limit</source>
        <translation>Erinnern nach %1 Std. am Netz über der Ladegrenze</translation>
    </message>
    <message>
        <source>Battery health below 80% (once)</source>
        <translation>Akkuzustand unter 80 % (einmal)</translation>
    </message>
    <message>
        <source>Alerts</source>
        <translation>Erinnerungen</translation>
    </message>
    <message>
        <source>Quiet hours</source>
        <translation>Ruhezeiten</translation>
    </message>
    <message>
        <source>Hold alerts during quiet hours</source>
        <translation>Erinnerungen in Ruhezeiten zurückhalten</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Von</translation>
    </message>
    <message>
        <source>Until</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>Menu bar</source>
        <translation>Menüleiste</translation>
    </message>
    <message>
        <source>Show percentage in the menu bar</source>
        <translation>Prozent in der Menüleiste zeigen</translation>
    </message>
    <message>
        <source>Show time remaining</source>
        <translation>Restzeit zeigen</translation>
    </message>
    <message>
        <source>macOS may also hold charging at 80% itself (Optimized Battery Charging, System Settings, Battery). Tollbeam can only remind you; it cannot control charging.</source>
        <translation>macOS kann das Laden auch selbst bei 80 % anhalten (Optimiertes Laden, Systemeinstellungen, Batterie). Tollbeam kann nur erinnern; es kann das Laden nicht steuern.</translation>
    </message>
</context>
<context>
    <name>tollbeam::SettingsWindow</name>
    <message>
        <source>Tollbeam Settings</source>
        <translation>Tollbeam-Einstellungen</translation>
    </message>
</context>
<context>
    <name>tollbeam::SnoozeBanner</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>tollbeam::SoundPicker</name>
    <message>
        <source>Default</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Kein Ton</translation>
    </message>
    <message>
        <source>Sound</source>
        <translation>Ton</translation>
    </message>
</context>
<context>
    <name>tollbeam::StatusMenu</name>
    <message>
        <source>Open Tollbeam</source>
        <translation>Tollbeam öffnen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>tollbeam::texts</name>
    <message>
        <source>No battery found</source>
        <translation>Kein Akku gefunden</translation>
    </message>
    <message>
        <source>Fully charged</source>
        <translation>Vollständig geladen</translation>
    </message>
    <message>
        <source>Charging, estimating time to full…</source>
        <translation>Lädt, Restzeit wird geschätzt …</translation>
    </message>
    <message>
        <source>Charging, %1 min to full</source>
        <translation>Lädt, voll in %1 Min.</translation>
    </message>
    <message>
        <source>Charging, %1 h to full</source>
        <translation>Lädt, voll in %1 Std.</translation>
    </message>
    <message>
        <source>Charging, %1 h %2 min to full</source>
        <translation>Lädt, voll in %1 Std. %2 Min.</translation>
    </message>
    <message>
        <source>Plugged in, not charging</source>
        <translation>Am Netz, lädt nicht</translation>
    </message>
    <message>
        <source>On battery, estimating time left…</source>
        <translation>Akkubetrieb, Restzeit wird geschätzt …</translation>
    </message>
    <message>
        <source>On battery, %1 min left</source>
        <translation>Akkubetrieb, noch %1 Min.</translation>
    </message>
    <message>
        <source>On battery, %1 h left</source>
        <translation>Akkubetrieb, noch %1 Std.</translation>
    </message>
    <message>
        <source>On battery, %1 h %2 min left</source>
        <translation>Akkubetrieb, noch %1 Std. %2 Min.</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Gut</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>Mittel</translation>
    </message>
    <message>
        <source>Worn</source>
        <translation>Verschlissen</translation>
    </message>
    <message>
        <source>Health: %1% (Good)</source>
        <translation>Zustand: %1 % (gut)</translation>
    </message>
    <message>
        <source>Health: %1% (Fair)</source>
        <translation>Zustand: %1 % (mittel)</translation>
    </message>
    <message>
        <source>Health: %1% (Worn)</source>
        <translation>Zustand: %1 % (verschlissen)</translation>
    </message>
    <message>
        <source>Cycles: %1</source>
        <translation>Ladezyklen: %1</translation>
    </message>
    <message>
        <source>Battery</source>
        <translation>Akku</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 Min.</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 Std.</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 Std. %2 Min.</translation>
    </message>
    <message>
        <source>Charge limit reached</source>
        <translation>Ladegrenze erreicht</translation>
    </message>
    <message>
        <source>Battery is at %1%. Unplug to keep it healthy.</source>
        <translation>Der Akku ist bei %1 %. Trennen Sie das Ladegerät, um ihn zu schonen.</translation>
    </message>
    <message>
        <source>Low battery</source>
        <translation>Akku schwach</translation>
    </message>
    <message>
        <source>Battery is at %1%. Plug in soon.</source>
        <translation>Der Akku ist bei %1 %. Schließen Sie bald das Ladegerät an.</translation>
    </message>
    <message>
        <source>Try Low Power Mode</source>
        <translation>Stromsparmodus verwenden?</translation>
    </message>
    <message>
        <source>Battery is at %1%. Turn on Low Power Mode (System Settings, Battery) to stretch it.</source>
        <translation>Der Akku ist bei %1 %. Mit dem Stromsparmodus (Systemeinstellungen, Batterie) hält er länger.</translation>
    </message>
    <message>
        <source>Plugged in for a long time</source>
        <translation>Lange am Netz</translation>
    </message>
    <message>
        <source>Plugged in for over %1 h at %2%. Unplug it to let the battery rest.</source>
        <translation>Seit über %1 Std. bei %2 % am Netz. Trennen Sie das Ladegerät, damit der Akku ruhen kann.</translation>
    </message>
    <message>
        <source>Battery health is low</source>
        <translation>Akkuzustand ist niedrig</translation>
    </message>
    <message>
        <source>Battery health has fallen to %1% of its original capacity.</source>
        <translation>Der Akku hat nur noch %1 % seiner ursprünglichen Kapazität.</translation>
    </message>
    <message>
        <source>Snooze 1 hour</source>
        <translation>1 Stunde pausieren</translation>
    </message>
    <message>
        <source>Allow notifications?</source>
        <translation>Mitteilungen erlauben?</translation>
    </message>
    <message>
        <source>Tollbeam uses notifications to remind you to unplug at your chosen charge level, when the battery is low, and when you have been plugged in too long. macOS will ask for permission next.</source>
        <translation>Tollbeam erinnert Sie mit Mitteilungen daran, das Ladegerät beim gewählten Ladestand zu trennen, wenn der Akku schwach ist und wenn das Gerät zu lange am Netz war. macOS fragt Sie als Nächstes um Erlaubnis.</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Not Now</source>
        <translation>Nicht jetzt</translation>
    </message>
    <message>
        <source>The history could not be saved to “%1”.</source>
        <translation>Der Verlauf konnte nicht unter „%1“ gespeichert werden.</translation>
    </message>
    <message>
        <source>The program is in a folder whose name has a $, a ` or a \. Not every desktop can start it from there.</source>
        <translation>Das Programm liegt in einem Ordner, dessen Name ein $, ein ` oder ein \ enthält. Nicht jede Arbeitsumgebung kann es von dort starten.</translation>
    </message>
</context>
</TS>
