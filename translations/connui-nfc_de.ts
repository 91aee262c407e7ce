<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
     SPDX-License-Identifier: LGPL-2.1-or-later -->
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name></name>
    <message id="qtn_comm_call">
        <source>Call</source>
        <extracomment>Button: call the number on the tag</extracomment>
        <translation>Anrufen</translation>
    </message>
    <message id="qtn_comm_cancel">
        <source>Cancel</source>
        <extracomment>Button: give up sending or receiving</extracomment>
        <translation>Abbrechen</translation>
    </message>
    <message id="qtn_comm_close">
        <source>Close</source>
        <extracomment>Button: close a message</extracomment>
        <translation>Schließen</translation>
    </message>
    <message id="qtn_comm_command_continue">
        <source>Continue</source>
        <extracomment>Button: go on to picking what to share</extracomment>
        <translation>Weiter</translation>
    </message>
    <message id="qtn_comm_command_done">
        <source>Done</source>
        <extracomment>Button: close the sheet</extracomment>
        <translation>Fertig</translation>
    </message>
    <message id="qtn_comm_command_no">
        <source>Don't pair</source>
        <extracomment>Button: do not pair</extracomment>
        <translation>Nicht koppeln</translation>
    </message>
    <message id="qtn_comm_command_yes">
        <source>Pair</source>
        <extracomment>Button: pair</extracomment>
        <translation>Koppeln</translation>
    </message>
    <message id="qtn_comm_gigabytes">
        <source>%L1 GB</source>
        <extracomment>Size, 10^9 bytes; %1 is a whole number</extracomment>
        <translation>%L1 GB</translation>
    </message>
    <message id="qtn_comm_kilobytes">
        <source>%L1 kB</source>
        <extracomment>Size, 10^3 bytes; %1 is a whole number</extracomment>
        <translation>%L1 kB</translation>
    </message>
    <message id="qtn_comm_megabytes">
        <source>%L1 MB</source>
        <extracomment>Size, 10^6 bytes; %1 is a whole number</extracomment>
        <translation>%L1 MB</translation>
    </message>
    <message id="qtn_comm_send">
        <source>Send</source>
        <extracomment>Button: send the text message that is on the tag</extracomment>
        <translation>Senden</translation>
    </message>
    <message id="qtn_nfc_connect">
        <source>Connect</source>
        <extracomment>Button: connect to the Bluetooth device that was touched</extracomment>
        <translation>Verbinden</translation>
    </message>
    <message id="qtn_nfc_connect_text">
        <source>The device you touched wants to connect over Bluetooth.</source>
        <extracomment>Question: pairing</extracomment>
        <translation>Das berührte Gerät möchte sich über Bluetooth verbinden.</translation>
    </message>
    <message id="qtn_nfc_connect_tit">
        <source>Pair with this device?</source>
        <extracomment>Title: pairing</extracomment>
        <translation>Mit diesem Gerät koppeln?</translation>
    </message>
    <message id="qtn_nfc_connect_to_tit">
        <source>Connect to %1?</source>
        <extracomment>Title: %1 is the name of a Bluetooth device</extracomment>
        <translation>Mit %1 verbinden?</translation>
    </message>
    <message id="qtn_nfc_disconnect">
        <source>Disconnect</source>
        <extracomment>Button: end the connection to the Bluetooth device that was touched</extracomment>
        <translation>Trennen</translation>
    </message>
    <message id="qtn_nfc_disconnect_text">
        <source>The phone ends the connection to %1.</source>
        <extracomment>Question: %1 is the name of a Bluetooth device</extracomment>
        <translation>Das Telefon trennt die Verbindung mit %1.</translation>
    </message>
    <message id="qtn_nfc_disconnect_tit">
        <source>Disconnect?</source>
        <extracomment>Title: a connected device was touched</extracomment>
        <translation>Verbindung trennen?</translation>
    </message>
    <message id="qtn_nfc_enablenfc_text">
        <source>NFC is off. Switch it on to read tags and to share by touch.</source>
        <extracomment>Question: NFC is needed and off</extracomment>
        <translation>NFC ist ausgeschaltet. Schalten Sie es ein, um NFC-Tags zu lesen und durch Berühren zu teilen.</translation>
    </message>
    <message id="qtn_nfc_enablenfc_tit">
        <source>Switch NFC on?</source>
        <extracomment>Title: NFC is needed and off</extracomment>
        <translation>NFC einschalten?</translation>
    </message>
    <message id="qtn_nfc_fail_txt">
        <source>NFC did not start. Try again, or restart the phone.</source>
        <extracomment>Notice: NFC did not come up within 20 seconds</extracomment>
        <translation>NFC ist nicht gestartet. Versuchen Sie es erneut oder starten Sie das Telefon neu.</translation>
    </message>
    <message id="qtn_nfc_fullname">
        <source>Near Field Communication (NFC)</source>
        <extracomment>Label of the switch in the settings</extracomment>
        <translation variants="yes"><lengthvariant>Nahfeldkommunikation (NFC)</lengthvariant><lengthvariant>NFC</lengthvariant></translation>
    </message>
    <message id="qtn_nfc_handover_text">
        <source>Sharing with %1 continues over Bluetooth.</source>
        <extracomment>Notice: the handover is complete; %1 is the name of the other device</extracomment>
        <translation>Das Teilen mit %1 geht über Bluetooth weiter.</translation>
    </message>
    <message id="qtn_nfc_hours" numerus="yes">
        <source>%Ln hours</source>
        <extracomment>Spoken, not shown: part of the time that a file still takes to arrive</extracomment>
        <translation>
            <numerusform>%Ln Stunde</numerusform>
            <numerusform>%Ln Stunden</numerusform>
        </translation>
    </message>
    <message id="qtn_nfc_link_disguised">
        <source>This link is suspicious: it is written so that its destination is unclear.</source>
        <extracomment>Above a web link whose spelling hides where it leads</extracomment>
        <translation>Dieser Link ist verdächtig: Seine Schreibweise verbirgt, wohin er führt.</translation>
    </message>
    <message id="qtn_nfc_link_host">
        <source>Leads to %1</source>
        <extracomment>Above a web link: %1 is the host that it leads to</extracomment>
        <translation>Führt zu %1</translation>
    </message>
    <message id="qtn_nfc_link_nohost">
        <source>This link is suspicious: it names no destination.</source>
        <extracomment>Above a web link that leads nowhere</extracomment>
        <translation>Dieser Link ist verdächtig: Er nennt kein Ziel.</translation>
    </message>
    <message id="qtn_nfc_link_plain">
        <source>Not encrypted</source>
        <extracomment>Above a web link that begins with http</extracomment>
        <translation>Nicht verschlüsselt</translation>
    </message>
    <message id="qtn_nfc_link_user">
        <source>This link is suspicious: it begins with a name that is not its destination.</source>
        <extracomment>Above a web link that begins with a name before its host</extracomment>
        <translation>Dieser Link ist verdächtig: Er beginnt mit einem Namen, der nicht sein Ziel ist.</translation>
    </message>
    <message id="qtn_nfc_message_more">
        <source>Not all of this message is shown.</source>
        <extracomment>Above a text message</extracomment>
        <translation>Diese Nachricht wird nicht ganz gezeigt.</translation>
    </message>
    <message id="qtn_nfc_message_receivers" numerus="yes">
        <source>This message goes to %L1 receivers.</source>
        <extracomment>Above a text message: %L1 is a number greater than one</extracomment>
        <translation>
            <numerusform>Diese Nachricht geht an %L1 Empfänger.</numerusform>
            <numerusform>Diese Nachricht geht an %L1 Empfänger.</numerusform>
        </translation>
    </message>
    <message id="qtn_nfc_minutes" numerus="yes">
        <source>%Ln minutes</source>
        <extracomment>Spoken, not shown: part of the time that a file still takes to arrive</extracomment>
        <translation>
            <numerusform>%Ln Minute</numerusform>
            <numerusform>%Ln Minuten</numerusform>
        </translation>
    </message>
    <message id="qtn_nfc_noanswer_text">
        <source>%1 has not accepted the content of the tag.</source>
        <extracomment>%1 is the name of the application</extracomment>
        <translation>%1 hat den Inhalt des NFC-Tags nicht angenommen.</translation>
    </message>
    <message id="qtn_nfc_noanswer_tit">
        <source>No answer</source>
        <extracomment>Title: an application does not take what is on a tag</extracomment>
        <translation>Keine Antwort</translation>
    </message>
    <message id="qtn_nfc_number">
        <source>Phone number</source>
        <extracomment>Above a phone number, in the question about it</extracomment>
        <translation>Telefonnummer</translation>
    </message>
    <message id="qtn_nfc_number_code">
        <source>This is a service code: it can change settings of the phone or of your contract.</source>
        <extracomment>Above a phone number with a star or a hash in it</extracomment>
        <translation>Dies ist ein Steuercode: Er kann Einstellungen des Telefons oder Ihres Vertrags ändern.</translation>
    </message>
    <message id="qtn_nfc_opening_tit">
        <source>Opening with %1…</source>
        <extracomment>Title while an application takes what is on a tag: %1 is its name</extracomment>
        <translation>%1 wird geöffnet …</translation>
    </message>
    <message id="qtn_nfc_pair">
        <source>Pair</source>
        <extracomment>Button: pair with the Bluetooth device that was touched</extracomment>
        <translation>Koppeln</translation>
    </message>
    <message id="qtn_nfc_pair_pin">
        <source>PIN: %1</source>
        <extracomment>Below the question whether to pair: %1 is the PIN of a Bluetooth device</extracomment>
        <translation>PIN: %1</translation>
    </message>
    <message id="qtn_nfc_pair_text">
        <source>After that, the device you touched can connect over Bluetooth.</source>
        <extracomment>Below the question whether to pair with a Bluetooth device</extracomment>
        <translation>Danach kann sich das berührte Gerät über Bluetooth verbinden.</translation>
    </message>
    <message id="qtn_nfc_pair_tit">
        <source>Pair with %1?</source>
        <extracomment>Title: %1 is the name of a Bluetooth device</extracomment>
        <translation>Mit %1 koppeln?</translation>
    </message>
    <message id="qtn_nfc_phone_hint">
        <source>Hold an NFC tag against this phone</source>
        <extracomment>Shown on the empty screen of the phone in the demo</extracomment>
        <translation>Halten Sie ein NFC-Tag an dieses Telefon</translation>
    </message>
    <message id="qtn_nfc_receive_amount">
        <source>%L1 of %2</source>
        <extracomment>Spoken, not shown: %L1 is how much of a file has arrived, %2 its size with its unit</extracomment>
        <translation>%L1 von %2</translation>
    </message>
    <message id="qtn_nfc_received_tit">
        <source>File received</source>
        <extracomment>Title: a file has arrived completely</extracomment>
        <translation>Datei empfangen</translation>
    </message>
    <message id="qtn_nfc_receive_fail_tit">
        <source>File not received</source>
        <extracomment>Title: a file has not arrived completely</extracomment>
        <translation>Datei nicht empfangen</translation>
    </message>
    <message id="qtn_nfc_receive_show">
        <source>Show</source>
        <extracomment>Button of a notification: shows the sheet of a file that arrives again</extracomment>
        <translation>Anzeigen</translation>
    </message>
    <message id="qtn_nfc_receive_text">
        <source>From %1</source>
        <extracomment>%1 is the sender's name</extracomment>
        <translation>Von %1</translation>
    </message>
    <message id="qtn_nfc_receive_time_remaining">
        <source>%1 remaining</source>
        <extracomment>%1 is a time, 4:59 or 1:02:03</extracomment>
        <translation>Noch %1</translation>
    </message>
    <message id="qtn_nfc_receive_tit">
        <source>Receiving file</source>
        <extracomment>Title of the sheet</extracomment>
        <translation>Dateiempfang</translation>
    </message>
    <message id="qtn_nfc_seconds" numerus="yes">
        <source>%Ln seconds</source>
        <extracomment>Spoken, not shown: part of the time that a file still takes to arrive</extracomment>
        <translation>
            <numerusform>%Ln Sekunde</numerusform>
            <numerusform>%Ln Sekunden</numerusform>
        </translation>
    </message>
    <message id="qtn_nfc_selecttoshare_contact_text">
        <source>Choose the contact to share, then touch the other device again.</source>
        <extracomment>Question: what to share</extracomment>
        <translation>Wählen Sie den Kontakt aus, den Sie teilen möchten, und berühren Sie dann das andere Gerät erneut.</translation>
    </message>
    <message id="qtn_nfc_selecttoshare_img_text">
        <source>Choose the picture to share, then touch the other device again.</source>
        <extracomment>Question: what to share</extracomment>
        <translation>Wählen Sie das Bild aus, das Sie teilen möchten, und berühren Sie dann das andere Gerät erneut.</translation>
    </message>
    <message id="qtn_nfc_selecttoshare_tit">
        <source>Choose what to share</source>
        <extracomment>Title: what to share</extracomment>
        <translation>Was möchten Sie teilen?</translation>
    </message>
    <message id="qtn_nfc_sett_about">
        <source>Hold the back of this phone against an NFC tag to open links, add contacts and call numbers, or against another device to pair it or to share files.</source>
        <extracomment>Explains NFC below the switches in the settings</extracomment>
        <translation>Halten Sie die Rückseite des Telefons an ein NFC-Tag, um Links zu öffnen, Kontakte hinzuzufügen und Nummern anzurufen, oder an ein anderes Gerät, um es zu koppeln oder Dateien zu teilen.</translation>
    </message>
    <message id="qtn_nfc_sett_apps">
        <source>Default applications</source>
        <extracomment>Heading in the settings: the applications that open the content of tags</extracomment>
        <translation>Standardanwendungen</translation>
    </message>
    <message id="qtn_nfc_sett_apps_contact">
        <source>Contacts</source>
        <extracomment>In the settings, above the application that opens contact cards</extracomment>
        <translation>Kontakte</translation>
    </message>
    <message id="qtn_nfc_sett_apps_mail">
        <source>Email addresses</source>
        <extracomment>In the settings, above the application that opens email addresses</extracomment>
        <translation>E-Mail-Adressen</translation>
    </message>
    <message id="qtn_nfc_sett_apps_message">
        <source>Text messages</source>
        <extracomment>In the settings, above the application that sends text messages</extracomment>
        <translation>Textnachrichten</translation>
    </message>
    <message id="qtn_nfc_sett_apps_number">
        <source>Phone numbers</source>
        <extracomment>In the settings, above the application that calls numbers</extracomment>
        <translation>Telefonnummern</translation>
    </message>
    <message id="qtn_nfc_sett_apps_place">
        <source>Places</source>
        <extracomment>In the settings, above the application that shows places on a map</extracomment>
        <translation>Orte</translation>
    </message>
    <message id="qtn_nfc_sett_apps_web">
        <source>Web links</source>
        <extracomment>In the settings, above the application that opens web links</extracomment>
        <translation>Weblinks</translation>
    </message>
    <message id="qtn_nfc_sett_confs">
        <source>Ask before opening what is on a tag</source>
        <extracomment>Label of the switch in the settings</extracomment>
        <translation variants="yes"><lengthvariant>Vor dem Öffnen von Inhalten eines NFC-Tags fragen</lengthvariant><lengthvariant>Vor dem Öffnen fragen</lengthvariant></translation>
    </message>
    <message id="qtn_nfc_sett_more_time">
        <source>More time before a question can be answered</source>
        <extracomment>Label of the switch in the settings: buttons take longer to accept a press</extracomment>
        <translation variants="yes"><lengthvariant>Mehr Zeit, bevor eine Frage beantwortet werden kann</lengthvariant><lengthvariant>Mehr Zeit bei Fragen</lengthvariant></translation>
    </message>
    <message id="qtn_nfc_settings_tit">
        <source>NFC settings</source>
        <extracomment>Title of the settings program's window</extracomment>
        <translation>NFC-Einstellungen</translation>
    </message>
    <message id="qtn_nfc_sett_transfers">
        <source>Show files that arrive</source>
        <extracomment>Button: shows the progress of files that arrive</extracomment>
        <translation>Eintreffende Dateien anzeigen</translation>
    </message>
    <message id="qtn_nfc_sett_unregistered">
        <source>Questions about tags cannot be shown here: the NFC service does not accept this session.</source>
        <extracomment>Below the switches: tags are not asked about in this session</extracomment>
        <translation>Fragen zu NFC-Tags können hier nicht angezeigt werden: Der NFC-Dienst nimmt diese Sitzung nicht an.</translation>
    </message>
    <message id="qtn_nfc_share_contact">
        <source>The device you touched gets the contact %1 %2.</source>
        <extracomment>Question: %1 and %2 are the two parts of the contact's name</extracomment>
        <translation>Das berührte Gerät erhält den Kontakt %1 %2.</translation>
    </message>
    <message id="qtn_nfc_share_fail_tit">
        <source>Nothing is sent</source>
        <extracomment>Title: nothing can be sent</extracomment>
        <translation>Es wird nichts gesendet</translation>
    </message>
    <message id="qtn_nfc_share_gone">
        <source>%1 is no longer there.</source>
        <extracomment>%1 is a file or a contact</extracomment>
        <translation>%1 ist nicht mehr da.</translation>
    </message>
    <message id="qtn_nfc_share_img">
        <source>The device you touched gets %1.</source>
        <extracomment>Question: %1 is a file name</extracomment>
        <translation>Das berührte Gerät erhält %1.</translation>
    </message>
    <message id="qtn_nfc_share_multi" numerus="yes">
        <source>The device you touched gets %1 items.</source>
        <extracomment>Question: %1 is the number of things, two or more</extracomment>
        <translation>
            <numerusform>Das berührte Gerät erhält %1 Element.</numerusform>
            <numerusform>Das berührte Gerät erhält %1 Elemente.</numerusform>
        </translation>
    </message>
    <message id="qtn_nfc_share_nothing">
        <source>There is nothing to send.</source>
        <extracomment>Why nothing is sent</extracomment>
        <translation>Es gibt nichts zu senden.</translation>
    </message>
    <message id="qtn_nfc_share_receiver">
        <source>To %1</source>
        <extracomment>Below the question whether to share: %1 is the name of the device that gets it</extracomment>
        <translation>An %1</translation>
    </message>
    <message id="qtn_nfc_share_tit">
        <source>Share by touch?</source>
        <extracomment>Title: sharing</extracomment>
        <translation>Durch Berühren teilen?</translation>
    </message>
    <message id="qtn_nfc_startfail_tit">
        <source>NFC is not available</source>
        <extracomment>Title: NFC did not come up</extracomment>
        <translation>NFC ist nicht verfügbar</translation>
    </message>
    <message id="qtn_nfc_start_flightmode">
        <source>Switch on NFC while flight mode stays on?</source>
        <extracomment>Question: NFC is wanted in flight mode</extracomment>
        <translation>NFC einschalten, während der Flugmodus an bleibt?</translation>
    </message>
    <message id="qtn_nfc_start_flightmode_tit">
        <source>Flight mode is on</source>
        <extracomment>Title: NFC is wanted in flight mode</extracomment>
        <translation>Flugmodus ist eingeschaltet</translation>
    </message>
    <message id="qtn_nfc_store_fail_text">
        <source>The setting stays as it was.</source>
        <extracomment>A switch went back to what it was</extracomment>
        <translation>Die Einstellung bleibt, wie sie war.</translation>
    </message>
    <message id="qtn_nfc_store_fail_tit">
        <source>The change could not be stored</source>
        <extracomment>Title: a setting was not stored</extracomment>
        <translation>Änderung nicht gespeichert</translation>
    </message>
    <message id="qtn_nfc_store_link">
        <source>Leads to the application store</source>
        <extracomment>Above a link into the application store</extracomment>
        <translation>Führt zum Store für Anwendungen</translation>
    </message>
    <message id="qtn_nfc_tags_app_txt">
        <source>Open with %1?</source>
        <extracomment>Question: %1 is an application's name</extracomment>
        <translation>Mit %1 öffnen?</translation>
    </message>
    <message id="qtn_nfc_tags_change_app_open">
        <source>Choose another application</source>
        <extracomment>Button: pick another application</extracomment>
        <translation variants="yes"><lengthvariant>Andere Anwendung wählen</lengthvariant><lengthvariant>Andere Anwendung</lengthvariant></translation>
    </message>
    <message id="qtn_nfc_tags_contact_tit">
        <source>Contact on tag</source>
        <extracomment>Title: a phone number or a contact card</extracomment>
        <translation>Kontakt auf dem NFC-Tag</translation>
    </message>
    <message id="qtn_nfc_tags_discard">
        <source>Discard</source>
        <extracomment>Button: do nothing with what is on the tag</extracomment>
        <translation>Verwerfen</translation>
    </message>
    <message id="qtn_nfc_tags_empty_text">
        <source>There is nothing on this tag.</source>
        <extracomment>Notice: empty tag</extracomment>
        <translation>Auf diesem NFC-Tag ist nichts.</translation>
    </message>
    <message id="qtn_nfc_tags_empty_tit">
        <source>Empty tag</source>
        <extracomment>Title: empty tag</extracomment>
        <translation>Leerer NFC-Tag</translation>
    </message>
    <message id="qtn_nfc_tags_fail_text">
        <source>The phone cannot read this tag.</source>
        <extracomment>Notice: unreadable tag</extracomment>
        <translation>Das Telefon kann diesen NFC-Tag nicht lesen.</translation>
    </message>
    <message id="qtn_nfc_tags_fail_tit">
        <source>Tag not supported</source>
        <extracomment>Title: unreadable tag</extracomment>
        <translation>NFC-Tag nicht unterstützt</translation>
    </message>
    <message id="qtn_nfc_tags_gen_tit">
        <source>Tag content</source>
        <extracomment>Title: content for an application</extracomment>
        <translation>Inhalt des NFC-Tags</translation>
    </message>
    <message id="qtn_nfc_tags_handler_nfc">
        <source>These applications can open what is on the tag.</source>
        <extracomment>Explanation above the list of applications</extracomment>
        <translation>Diese Anwendungen können den Inhalt des NFC-Tags öffnen.</translation>
    </message>
    <message id="qtn_nfc_tags_more">
        <source>Also on this tag: %1</source>
        <extracomment>%1 lists what else is on the tag</extracomment>
        <translation>Auch auf diesem NFC-Tag: %1</translation>
    </message>
    <message id="qtn_nfc_tags_open">
        <source>Open</source>
        <extracomment>Button: open with the application named</extracomment>
        <translation>Öffnen</translation>
    </message>
    <message id="qtn_nfc_tags_selapp_tit">
        <source>Choose application</source>
        <extracomment>Title: list of applications</extracomment>
        <translation>Anwendung wählen</translation>
    </message>
    <message id="qtn_nfc_tags_sms_receiver">
        <source>To: %1</source>
        <extracomment>%1 is a phone number</extracomment>
        <translation>An: %1</translation>
    </message>
    <message id="qtn_nfc_tags_sms_tit">
        <source>Text message on tag</source>
        <extracomment>Title: a text message ready to be sent</extracomment>
        <translation>SMS auf dem NFC-Tag</translation>
    </message>
    <message id="qtn_nfc_tags_store_tit">
        <source>Store link on tag</source>
        <extracomment>Title: a link into the application store</extracomment>
        <translation>Store-Link auf dem NFC-Tag</translation>
    </message>
    <message id="qtn_nfc_tags_text_tit">
        <source>Text on tag</source>
        <extracomment>Title: plain text</extracomment>
        <translation>Text auf dem NFC-Tag</translation>
    </message>
    <message id="qtn_nfc_tags_type" numerus="yes">
        <source>%1, %2 bytes</source>
        <extracomment>%1 is a type of data, %2 the number of its bytes</extracomment>
        <translation>
            <numerusform>%1, %2 Byte</numerusform>
            <numerusform>%1, %2 Byte</numerusform>
        </translation>
    </message>
    <message id="qtn_nfc_tags_unknown_more">
        <source>This tag holds more than this link.</source>
        <extracomment>The tag has data beside the link that the phone does not understand</extracomment>
        <translation>Dieser NFC-Tag enthält mehr als diesen Link.</translation>
    </message>
    <message id="qtn_nfc_tags_url_tit">
        <source>Web link on tag</source>
        <extracomment>Title: a web link</extracomment>
        <translation>Weblink auf dem NFC-Tag</translation>
    </message>
    <message id="qtn_nfc_tags_view">
        <source>View</source>
        <extracomment>Button: show what is on the tag</extracomment>
        <translation>Ansehen</translation>
    </message>
    <message id="qtn_nfc_touched">
        <source>NFC touch</source>
        <extracomment>Spoken when the banner of a touch has appeared, and shown as a notification where there can be no banner; the title of the windows of questions</extracomment>
        <translation>NFC-Berührung</translation>
    </message>
    <message id="qtn_nfc_touchtoshare_img_text">
        <source>Touch the other device with the back of this phone.</source>
        <extracomment>Notice: touch to share</extracomment>
        <translation>Berühren Sie das andere Gerät mit der Rückseite dieses Telefons.</translation>
    </message>
    <message id="qtn_nfc_touchtoshare_tit">
        <source>Touch to share</source>
        <extracomment>Title: touch to share</extracomment>
        <translation>Zum Teilen berühren</translation>
    </message>
    <message id="qtn_nfc_unnamed_device">
        <source>unnamed device</source>
        <extracomment>In place of the name of a device that has none</extracomment>
        <translation>Gerät ohne Namen</translation>
    </message>
    <message id="qtn_nfc_viewer_address">
        <source>Address</source>
        <extracomment>Label of a postal address on a contact card</extracomment>
        <translation>Adresse</translation>
    </message>
    <message id="qtn_nfc_viewer_birthday">
        <source>Birthday</source>
        <extracomment>Label of a date on a contact card</extracomment>
        <translation>Geburtstag</translation>
    </message>
    <message id="qtn_nfc_viewer_bytes">
        <source>First bytes</source>
        <extracomment>Label of the first bytes of data, in hex</extracomment>
        <translation>Erste Bytes</translation>
    </message>
    <message id="qtn_nfc_viewer_company">
        <source>Company</source>
        <extracomment>Label on a contact card</extracomment>
        <translation>Firma</translation>
    </message>
    <message id="qtn_nfc_viewer_contact">
        <source>Contact</source>
        <extracomment>Heading of a contact card that was on a tag</extracomment>
        <translation>Kontakt</translation>
    </message>
    <message id="qtn_nfc_viewer_data">
        <source>Data</source>
        <extracomment>Heading of data of a kind that cannot be shown</extracomment>
        <translation>Daten</translation>
    </message>
    <message id="qtn_nfc_viewer_email">
        <source>Email</source>
        <extracomment>Label on a contact card</extracomment>
        <translation>E-Mail</translation>
    </message>
    <message id="qtn_nfc_viewer_job">
        <source>Job title</source>
        <extracomment>Label on a contact card</extracomment>
        <translation>Position</translation>
    </message>
    <message id="qtn_nfc_viewer_link">
        <source>Link</source>
        <extracomment>Heading of a link that was on a tag</extracomment>
        <translation>Link</translation>
    </message>
    <message id="qtn_nfc_viewer_more" numerus="yes">
        <source>Not shown here: %L1 more</source>
        <extracomment>%L1 is the number of further contents of the tag</extracomment>
        <translation>
            <numerusform>Hier nicht gezeigt: %L1 weiterer Inhalt</numerusform>
            <numerusform>Hier nicht gezeigt: %L1 weitere Inhalte</numerusform>
        </translation>
    </message>
    <message id="qtn_nfc_viewer_not_saved">
        <source>Could not be saved</source>
        <extracomment>Button, after the contact could not be saved; a press tries again</extracomment>
        <translation>Nicht gespeichert</translation>
    </message>
    <message id="qtn_nfc_viewer_note">
        <source>Note</source>
        <extracomment>Label on a contact card</extracomment>
        <translation>Notiz</translation>
    </message>
    <message id="qtn_nfc_viewer_nothing">
        <source>There is nothing to show.</source>
        <extracomment>In the place of the contents of a tag</extracomment>
        <translation>Es gibt nichts zu zeigen.</translation>
    </message>
    <message id="qtn_nfc_viewer_phone">
        <source>Phone</source>
        <extracomment>Label of a number on a contact card</extracomment>
        <translation>Telefon</translation>
    </message>
    <message id="qtn_nfc_viewer_save">
        <source>Save contact</source>
        <extracomment>Button: save the contact card of the tag</extracomment>
        <translation>Kontakt speichern</translation>
    </message>
    <message id="qtn_nfc_viewer_saved">
        <source>Saved</source>
        <extracomment>Button, after the contact was saved</extracomment>
        <translation>Gespeichert</translation>
    </message>
    <message id="qtn_nfc_viewer_text">
        <source>Text</source>
        <extracomment>Heading of a text that was on a tag</extracomment>
        <translation>Text</translation>
    </message>
    <message id="qtn_nfc_viewer_tit">
        <source>On the tag</source>
        <extracomment>Title of the window that shows the contents of a tag</extracomment>
        <translation>Inhalt des NFC-Tags</translation>
    </message>
    <message id="qtn_nfc_viewer_type">
        <source>Type</source>
        <extracomment>Label of the type of data</extracomment>
        <translation>Typ</translation>
    </message>
    <message id="qtn_nfc_viewer_web">
        <source>Website</source>
        <extracomment>Label on a contact card</extracomment>
        <translation>Website</translation>
    </message>
    <message id="qtn_nfc_waiting_dialog_text">
        <source>Waiting for the other device.</source>
        <extracomment>Notice: the other device has to answer</extracomment>
        <translation>Warten auf das andere Gerät.</translation>
    </message>
    <message id="qtn_nfc_waiting_dialog_tit">
        <source>Sharing</source>
        <extracomment>Title: the other device has to answer</extracomment>
        <translation>Teilen</translation>
    </message>
    <message id="qtn_nfc_waiting_more" numerus="yes">
        <source>%L1 more questions</source>
        <extracomment>Badge: %1 is the number of questions that wait behind this one</extracomment>
        <translation>
            <numerusform>Noch %L1 Frage</numerusform>
            <numerusform>Noch %L1 Fragen</numerusform>
        </translation>
    </message>
</context>
</TS>
