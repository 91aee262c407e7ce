// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Decodes the NDEF messages of standard input, a line of hex each, with the module "ndef" of the npm registry. Prints a line
// for each: its records, as type name format, type, payload and, of a URI, the text, in hex. Exits with 77 where the module is
// not there.
'use strict';
let ndef;
try {
    ndef = require('ndef');
} catch (error) {
    process.exit(77);
}
const hex = data => Buffer.from(data).toString('hex');
const lines = require('fs').readFileSync(0, 'ascii').split('\n').filter(line => line);
for (const line of lines) {
    const records = ndef.decodeMessage(Array.from(Buffer.from(line, 'hex')));
    console.log(records.map(record => {
        const uri = record.tnf === ndef.TNF_WELL_KNOWN ? ndef.uri.decodePayload(record.payload) : '';
        return [record.tnf, hex(record.type), hex(record.payload), hex(uri)].join(':');
    }).join(' '));
}
