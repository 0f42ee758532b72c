// Walks through the page in headless Chromium: node browser.mjs ADDRESS FOLDER BROWSER [START OF THE STATES' NAMES]
// Screenshots and downloads go to the folder. Run by script/test-page.
import { createRequire } from 'node:module';
import { readFileSync } from 'node:fs';
import { gzipSync } from 'node:zlib';

const [address, folder, browserPath, only = ''] = process.argv.slice(2);
const { chromium } = createRequire(`${folder}/`)('playwright-core');
const axe = readFileSync(`${folder}/node_modules/axe-core/axe.min.js`, 'utf8');
const examples = new URL('../../../examples/', import.meta.url).pathname;

let passed = 0, failed = 0;
const complaints = [];
const browser = await chromium.launch({
    executablePath: browserPath,
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
        '--disable-component-update', '--disable-sync'],
});

async function open(where, options = {}) {
    const context = await browser.newContext({ viewport: { width: 1100, height: 800 }, locale: 'de-DE', acceptDownloads: true, ...options });
    const page = await context.newPage();
    // Whatever the policy blocks or the page asks elsewhere is a complaint here.
    page.on('console', message => ['error', 'warning'].includes(message.type()) && !/status of 4\d\d/.test(message.text()) && complaints.push(message.text()));
    page.on('request', request => request.url().startsWith(address) || complaints.push(`asks ${request.url()}`));
    await page.goto(`${address}/?page=${where}`);
    return page;
}

async function test(name, where, walk, options) {
    const page = await open(where, options);
    try {
        await walk(page);
        ++passed;
    } catch (error) {
        ++failed;
        console.error(`FAILED: ${name}: ${error.message}`);
    }
    await page.context().close();
}

function equal(got, expected) {
    if (JSON.stringify(got) !== JSON.stringify(expected)) throw new Error(`${JSON.stringify(got)} instead of ${JSON.stringify(expected)}`);
}

const heading = page => page.locator('.notice .heading').first().innerText();
const focused = page => page.evaluate(() => document.activeElement.id || document.activeElement.className || document.activeElement.textContent);
const file = (name, text) => ({ name, mimeType: 'text/plain', buffer: Buffer.from(text) });
const upload = (page, name, text) => page.setInputFiles('#f-file', file(name, text));
async function press(page, name) {
    await page.getByRole('button', { name, exact: true }).first().click();
    await page.waitForLoadState('load');
}
async function fill(page, fields) {
    for (const [id, text] of Object.entries(fields)) await page.fill(`#f-${id}`, text);
}
async function download(page, click) {
    const [file] = await Promise.all([page.waitForEvent('download'), click()]);
    return { name: file.suggestedFilename(), text: readFileSync(await file.path(), 'utf8') };
}
// By keyboard alone: Tab until a field or button has the focus.
async function tabTo(page, what) {
    for (let presses = 0; presses < 100; ++presses) {
        await page.keyboard.press('Tab');
        const now = await page.evaluate(() => [document.activeElement.id, document.activeElement.textContent]);
        if (now.includes(what)) return;
    }
    throw new Error(`no way to ${what} by Tab`);
}
async function type(page, fields) {
    for (const [id, text] of Object.entries(fields)) {
        await tabTo(page, `f-${id}`);
        await page.keyboard.type(text);
    }
}

const html = '<b onclick=x>"&\'';
const payer = { name: 'Zimmerei Sander GmbH', iban: 'DE89 3704 0044 0532 0130 00' };
const bad = { 'row-1-name': html, 'row-1-iban': 'DE88370400440532013000', 'row-1-amount': '1.190', 'row-3-name': 'Änne Groß' };
const good = {
    'row-1-name': 'Müller & Söhne', 'row-1-iban': 'DE89370400440532013000', 'row-1-amount': '1.190,00',
    'row-3-iban': 'DE12500105170648489890', 'row-3-amount': '0,01',
};

async function transfer(page) {
    await fill(page, { ...payer, ...bad });
    await page.keyboard.press('Enter');
    await page.waitForSelector('.notice.bad');
    equal(await heading(page), '2 Zahlungen, 5 Fehler: Es gibt noch keine SEPA-Datei');
    equal(await page.title(), '5 Fehler – Überweisungen – SEPA');
    equal(await focused(page), 'notice bad');
    equal(await page.getAttribute('#f-bic', 'placeholder'), 'COBADEFFXXX');
    equal(await page.inputValue('#f-row-1-name'), html);
    equal(await page.locator('[aria-invalid]').evaluateAll(fields => fields.map(field => field.id)),
        ['f-row-1-name', 'f-row-1-iban', 'f-row-1-amount', 'f-row-3-iban', 'f-row-3-amount']);
    await page.locator('.notes a').nth(1).click();
    equal(await page.evaluate(() => location.hash), '#f-row-1-iban');
    await press(page, 'SEPA-Datei herunterladen');
    equal(await page.locator('.notice.bad').count(), 1);
    await fill(page, good);
    await press(page, 'Prüfen');
    equal(await heading(page), '2 Zahlungen, 1.190,01 EUR: bereit für die Bank');
    const id = await page.getAttribute('#f-messageId', 'placeholder');
    const made = await download(page, () => press(page, 'SEPA-Datei herunterladen'));
    equal(made.name, `transfer-${id}.xml`);
    for (const part of [`<MsgId>${id}</MsgId>`, '<CtrlSum>1190.01</CtrlSum>', '<Nm>Müller &amp; Söhne</Nm>', '</Document>']) {
        equal([part, made.text.includes(part)], [part, true]);
    }
}
if (!only) await test('a transfer is typed, mended and downloaded', 'transfer', transfer);
if (!only) await test('all of it works without script', 'transfer', transfer, { javaScriptEnabled: false });

if (!only) await test('a transfer by keyboard alone', 'transfer', async page => {
    await page.keyboard.press('Tab');
    equal(await focused(page), 'skip');
    await type(page, { ...payer, 'row-1-name': 'Müller', 'row-1-iban': 'DE88370400440532013000', 'row-1-amount': '5' });
    await page.keyboard.press('Enter');
    await page.waitForSelector('.notice.bad');
    await tabTo(page, 'Zeile 1, IBAN: Die Prüfziffer der IBAN ist falsch');
    await page.keyboard.press('Enter');
    await page.waitForFunction(() => location.hash === '#f-row-1-iban');
    await page.keyboard.press('Tab');
    if (await focused(page) !== 'f-row-1-iban') await page.keyboard.press('Shift+Tab');
    equal(await focused(page), 'f-row-1-iban');
    await page.keyboard.press('Control+a');
    await page.keyboard.type('DE89370400440532013000\n');
    await page.waitForSelector('.notice.good');
    await page.keyboard.press('Tab');
    equal((await download(page, () => page.keyboard.press('Enter'))).text.includes('<InstdAmt Ccy="EUR">5.00<'), true);
});

if (!only) await test('Back and Forward show what was there', 'transfer', async page => {
    await fill(page, { ...payer, ...bad });
    await press(page, 'Prüfen');
    await fill(page, good);
    await press(page, 'Prüfen');
    await page.goBack();
    equal([await heading(page), await page.inputValue('#f-row-1-iban')], ['2 Zahlungen, 5 Fehler: Es gibt noch keine SEPA-Datei', good['row-1-iban']]);
    await page.goForward();
    equal(await heading(page), '2 Zahlungen, 1.190,01 EUR: bereit für die Bank');
});

if (!only) await test('what is typed goes along to other tabs and languages', 'transfer', async page => {
    await fill(page, { ...payer, ...bad });
    await press(page, 'IBAN');
    await fill(page, { lines: '532013000; 370 400 44' });
    await press(page, 'Prüfen');
    await press(page, 'Kontoauszüge');
    await press(page, 'English');
    equal([await page.locator('h1').innerText(), await page.getAttribute('html', 'lang')], ['Statements', 'en']);
    await press(page, 'IBANs');
    equal([await page.inputValue('#f-lines'), await page.locator('#check dd').first().innerText()], ['532013000; 370 400 44', 'DE89 3704 0044 0532 0130 00']);
    await press(page, 'Take over as payee of a transfer');
    equal(await Promise.all(['1-name', '3-name', '2-iban'].map(id => page.inputValue(`#f-row-${id}`))), [html, 'Änne Groß', 'DE89 3704 0044 0532 0130 00']);
});

if (!only) await test('a double click makes one message', 'transfer', async page => {
    await fill(page, { ...payer, ...bad, ...good });
    const files = [];
    page.on('download', file => files.push(file));
    await page.getByRole('button', { name: 'SEPA-Datei herunterladen' }).first().dblclick();
    await page.waitForTimeout(1500);
    equal(new Set(files.map(file => file.suggestedFilename())).size, 1);
});

if (!only) await test('two people at once', 'transfer', async page => {
    const other = await open('transfer');
    await fill(page, { ...payer, ...bad, ...good });
    await fill(other, { ...payer, ...bad, ...good, 'row-1-amount': '7,00' });
    const files = await Promise.all([page, other].map(one => download(one, () => press(one, 'SEPA-Datei herunterladen'))));
    equal(files.map(file => /<CtrlSum>(.*?)</.exec(file.text)[1]), ['1190.01', '7.01']);
    await other.context().close();
});

if (!only) await test('a lost cookie gives the form back', 'transfer', async page => {
    await fill(page, payer);
    await page.context().clearCookies();
    await press(page, 'Prüfen');
    equal([/^Das Formular war lange offen/.test(await heading(page)), await page.inputValue('#f-name')], [true, payer.name]);
    await press(page, 'Prüfen');
    equal(await heading(page), '0 Zahlungen, 1 Fehler: Es gibt noch keine SEPA-Datei');
});

if (!only) await test('a table is pasted, and odd things are seen before the download', 'transfer', async page => {
    await fill(page, { ...payer, 'row-1-name': 'Eingetippt' });
    const row = 'Müller\tDE89370400440532013000\t1,50\tR-1\t06.12.2026\n';
    await page.fill('#f-pasted', `Empfänger\tIBAN\tBetrag\tVerwendungszweck\tFällig am\n${row}${row}`);
    await press(page, 'Prüfen');
    equal(await page.locator('.heading').allInnerTexts(), ['2 Zahlungen, 3,00 EUR: bereit für die Bank',
        'Die Tabelle hat die hier eingetippte Zahlung ersetzt. Mit „Zurück“ im Browser kommen sie wieder.']);
    equal(await page.locator('.notice.odd .notes li').allInnerTexts().then(points => points.map(point => point.replace(/\s*(Soll|Die Bank).*/, ''))), [
        'Zeile 2, Fällig am: Der 06.12.2026 ist ein Sonntag', 'Zeile 3, Betrag: Konto und Betrag wie in Zeile 2', 'Zeile 3, Fällig am: Der 06.12.2026 ist ein Sonntag',
    ]);
    await press(page, 'Alle Zeilen zeigen');
    equal([await page.locator('[aria-invalid]').count(), await page.inputValue('#f-row-3-date')], [0, '06.12.2026']);
    await press(page, 'Mehr Zeilen');
    await fill(page, { 'row-4-name': 'Kunz', 'row-4-iban': 'DE12500105170648489890', 'row-4-amount': '7' });
    await press(page, 'Prüfen');
    equal((await download(page, () => press(page, 'SEPA-Datei herunterladen'))).text.includes('<CtrlSum>10.00</CtrlSum>'), true);
});

if (!only) await test('two faults among 5,000 rows are mended in the page', 'transfer', async page => {
    await fill(page, payer);
    const rows = [...Array(5000).keys()].map(i => `Kunde ${i};${[7, 4000].includes(i) ? 'DE99' : 'DE89370400440532013000'};${i + 1},50;R-${i}\n`);
    await upload(page, 'x.csv', `Empfänger;IBAN;Betrag;Zweck\n${rows.join('')}`);
    await press(page, 'Prüfen');
    equal(await heading(page), '5.000 Zahlungen, 2 Fehler: Es gibt noch keine SEPA-Datei');
    await fill(page, { 'row-9-iban': 'DE12500105170648489890', 'row-4002-iban': 'DE12500105170648489890' });
    await press(page, 'Prüfen');
    equal(await heading(page), '5.000 Zahlungen, 12.505.000,00 EUR: bereit für die Bank');
    equal((await download(page, () => press(page, 'SEPA-Datei herunterladen'))).text.includes('<NbOfTxs>5000</NbOfTxs>'), true);
});

if (!only) await test('columns with strange headings are assigned by keyboard', 'debit', async page => {
    await fill(page, { ...payer, creditorId: 'DE98ZZZ09999999999' });
    await upload(page, 'x.csv', 'Liste November\nMitglied;IBAN;Beitrag;MandatsNr;Datum Unterschrift;Farbe\nA;DE89370400440532013000;10,00;M1;01.02.2020;rot\n');
    await press(page, 'Prüfen');
    const selects = page.locator('.assigned select');
    for (const [heading, meaning] of [['Beitrag', 'Betrag in EUR'], ['MandatsNr', 'Mandatsreferenz'], ['Datum Unterschrift', 'Mandatsdatum']]) {
        await page.getByLabel(`Bedeutung von ${heading}`).selectOption({ label: meaning });
    }
    equal(await selects.count(), 6);
    await selects.first().focus();
    await press(page, 'Prüfen');
    equal(await heading(page), '1 Zahlung, 10,00 EUR: bereit für die Bank');
    equal((await download(page, () => press(page, 'SEPA-Datei herunterladen'))).text.includes('<SeqTp>RCUR</SeqTp>'), true);
});

if (!only) await test('200 IBANs are checked and come back in their order', 'iban', async page => {
    const lines = [...Array(200).keys()].map(i => i % 50 === 7 ? 'DE88370400440532013000' : 'DE89370400440532013000');
    await fill(page, { lines: lines.join('\n') });
    await page.keyboard.press('Tab');
    await page.keyboard.press('Enter');
    await page.waitForSelector('.notice.bad');
    equal(await heading(page), '200 Zeilen: 4 falsch, 0 mit Hinweis, 196 gültig');
    equal(await page.locator('tbody td').first().innerText(), '8');
    const csv = (await download(page, () => press(page, 'Als CSV-Datei herunterladen'))).text.split('\n');
    equal(csv.slice(1, 201).map(line => line.split(';')[0]), lines);
});

if (!only) await test('a booking of a packed file is found by its reference', 'statement', async page => {
    await page.setInputFiles('#f-file', [
        { name: 'november.sta.gz', mimeType: 'application/gzip', buffer: gzipSync(readFileSync(`${examples}statement.sta`)) },
        file('leer.sta', ':20:1\r\n:25:37040044/532013000\r\n:60F:C261126EUR1,\r\n:62F:C261126EUR2,\r\n-\r\n'),
    ]);
    await press(page, 'Dateien lesen');
    equal(await heading(page), '6 Auszüge, 9 Buchungen: 1 Auszug ist zu prüfen');
    await page.locator('.notice a').first().click();
    equal(await page.evaluate(() => document.querySelector(':target h3').innerText.replace(/\s+/g, ' ')), 'Auszug Differenz 1,00');
    await fill(page, { q: 'jäger', from: '27.11.2026' });
    await page.keyboard.press('Enter');
    await page.waitForSelector('text=1 Buchung gefunden: Eingänge 4.760,00 EUR');
    equal(await page.locator('.bookings strong').allInnerTexts(), ['Familie Jäger']);
    equal((await download(page, () => press(page, 'Gefundene als CSV'))).text.includes(';4760,00;EUR;false;Familie Jäger;'), true);
    await press(page, 'IBAN');
    await press(page, 'Kontoauszüge');
    equal(await page.locator('.bookings strong').allInnerTexts(), ['Familie Jäger']);
});

if (!only) await test('damage in a statement is told, and nothing in it is taken for HTML', 'statement', async page => {
    await upload(page, 'x.sta', `:20:${html}\n:25:${html}\n:60F:C261126EUR1,00\n:61:261127RC0,40NTRF${html}\n:86:166?00${html}?20${html}?32${html}\n:86`);
    await press(page, 'Dateien lesen');
    equal(await heading(page), '1 Auszug, 1 Buchung: 1 Auszug ist zu prüfen');
    equal(await page.locator('h2').nth(1).innerText(), `${html} EUR`);
    equal(await page.locator('.bookings strong').innerText(), html);
    equal(await page.locator('.badge').first().innerText(), 'abgeschnitten');
    equal(await page.locator('.bookings .money').nth(1).innerText(), '−0,40');
    await page.locator('.file summary').click();
    await page.setInputFiles('#f-file', file('large.sta', 'x'.repeat(12 * 1024 * 1024)));
    await press(page, 'Dateien lesen');
    equal(await heading(page), 'Die Datei ist zu groß: Sie darf 10 MB haben. Ihre Eingaben sind noch da.');
});

// A month of so many bookings and a batch of 30 payments, whose closing balance is off.
function camt(bookings) {
    const details = (id, amount) => `<TxDtls><Refs><EndToEndId>${id}</EndToEndId></Refs><Amt Ccy="EUR">${amount}</Amt><RltdPties><Dbtr><Nm>Kunde ${id}</Nm></Dbtr></RltdPties></TxDtls>`;
    const entry = (amount, inside) => `<Ntry><Amt Ccy="EUR">${amount}</Amt><CdtDbtInd>CRDT</CdtDbtInd><Sts><Cd>BOOK</Cd></Sts><BookgDt><Dt>2026-11-27</Dt></BookgDt>
        <NtryDtls>${inside}</NtryDtls><AddtlNtryInf>GUTSCHRIFT</AddtlNtryInf></Ntry>`;
    const balance = (code, amount) => `<Bal><Tp><CdOrPrtry><Cd>${code}</Cd></CdOrPrtry></Tp><Amt Ccy="EUR">${amount}</Amt><CdtDbtInd>CRDT</CdtDbtInd><Dt><Dt>2026-11-27</Dt></Dt></Bal>`;
    const numbers = count => [...Array(count).keys()].map(i => i + 1);
    return `<Document xmlns="urn:iso:std:iso:20022:tech:xsd:camt.053.001.08"><BkToCstmrStmt><Stmt><ElctrncSeqNb>7</ElctrncSeqNb><Acct><Id><IBAN>DE62701500000020228888</IBAN></Id><Ccy>EUR</Ccy></Acct>
        ${balance('PRCD', '0.00')}${balance('CLBD', `${bookings + 31}.00`)}${numbers(bookings).map(i => entry('1.00', details(`RE-${i}.`, '1.00'))).join('')}
        ${entry('30.00', numbers(30).map(i => details(`TEIL-${i}.`, '1.00')).join(''))}</Stmt></BkToCstmrStmt></Document>`;
}
const report = `<Document><CstmrPmtStsRpt><OrgnlGrpInfAndSts><OrgnlMsgId>M1</OrgnlMsgId></OrgnlGrpInfAndSts><OrgnlPmtInfAndSts><TxInfAndSts><OrgnlEndToEndId>E2</OrgnlEndToEndId><TxSts>RJCT</TxSts>
    <StsRsnInf><Rsn><Cd>AC04</Cd></Rsn></StsRsnInf></TxInfAndSts></OrgnlPmtInfAndSts></CstmrPmtStsRpt></Document>`;

async function month(page, bookings = 5) {
    await page.setInputFiles('#f-file', [file('monat.xml', camt(bookings)), file('bericht.xml', report)]);
    await press(page, 'Dateien lesen');
}
async function booking(page) {
    await month(page, 401);
    equal(await page.locator('.heading').allInnerTexts(), ['1 Auszug, 402 Buchungen: 1 Auszug ist zu prüfen', 'Statusbericht zu M1: 1 abgelehnt']);
    await page.getByRole('button', { name: 'Seite 3' }).first().click();
    await page.waitForSelector('[id=statement-1] >> text=Schlusssaldo');
    await tabTo(page, 'f-q');
    await page.keyboard.type('kunde teil-17.\n');
    await page.waitForSelector('text=1 Buchung gefunden: Eingänge 30,00 EUR');
    equal(await focused(page), 'found');
    await tabTo(page, 'Einzelheiten: GUTSCHRIFT');
    await page.keyboard.press('Enter');
    await page.waitForSelector('text=1 von 30 Zahlungen');
    const csv = await download(page, () => press(page, 'Gefundene als CSV'));
    equal([csv.name, csv.text.split('\n').length], ['Buchungen.csv', 3]);
}
if (!only) await test('a booking is found by the reference of a payment within and leaves as CSV', 'statement', booking);
if (!only) await test('it is found without script, on a phone', 'statement', booking, { javaScriptEnabled: false, viewport: { width: 320, height: 800 } });

// Every state, for the eyes of people and of axe; nothing is cut off sideways.
const states = {
    'iban': ['iban', async () => {}],
    'iban-answers': ['iban', async page => {
        await fill(page, { lines: 'DE88370400440532013000', query: 'COBADEFFXXX' });
        await press(page, 'Prüfen');
    }],
    'iban-list': ['iban', async page => {
        await fill(page, { lines: 'DE89370400440532013000\n532013000; 37040044\nDE88370400440532013000\nAT483200000012345864\nUnsinn' });
        await press(page, 'Prüfen');
    }],
    'statement': ['statement', page => press(page, 'Beispiel zeigen')],
    'statement-report': ['statement', async page => {
        const payment = (id, status, reason) => `<TxInfAndSts><OrgnlEndToEndId>${id}</OrgnlEndToEndId><TxSts>${status}</TxSts>${reason}<OrgnlTxRef><Amt><InstdAmt Ccy="EUR">10</InstdAmt></Amt><Cdtr><Pty><Nm>Meier</Nm></Pty></Cdtr><CdtrAcct><Id><IBAN>DE89370400440532013000</IBAN></Id></CdtrAcct></OrgnlTxRef></TxInfAndSts>`;
        await upload(page, 'status.xml', '<Document xmlns="urn:iso:std:iso:20022:tech:xsd:pain.002.001.10"><CstmrPmtStsRpt><GrpHdr><MsgId>R1</MsgId></GrpHdr><OrgnlGrpInfAndSts><OrgnlMsgId>M1</OrgnlMsgId><OrgnlMsgNmId>pain.001</OrgnlMsgNmId><GrpSts>PART</GrpSts></OrgnlGrpInfAndSts>'
            + `<OrgnlPmtInfAndSts><OrgnlPmtInfId>P1</OrgnlPmtInfId>${payment('E1', 'RJCT', '<StsRsnInf><Rsn><Cd>AC04</Cd></Rsn></StsRsnInf>')}${payment('E2', 'ACSC', '')}</OrgnlPmtInfAndSts></CstmrPmtStsRpt></Document>`);
        await press(page, 'Dateien lesen');
        equal(await page.locator('.results .badge').allInnerTexts(), ['abgelehnt (RJCT)', 'ausgeführt (ACSC)']);
    }],
    'statement-search': ['statement', async page => {
        await press(page, 'Beispiel zeigen');
        await fill(page, { q: 'november' });
        await press(page, 'Suchen');
    }],
    'statement-faults': ['statement', async page => {
        await upload(page, 'x.sta', readFileSync(`${examples}statement.sta`, 'utf8').replace('C261127EUR16556,78', 'C261127EUR16556,79').slice(0, 1500));
        await press(page, 'Dateien lesen');
    }],
    'statement-month': ['statement', page => month(page)],
    'statement-found': ['statement', async page => {
        await month(page);
        await fill(page, { q: 'teil-17.', from: '31.2.2026' });
        await press(page, 'Suchen');
        await page.locator('.bookings summary').click();
    }],
    'statement-batch': ['statement', async page => {
        await month(page);
        await fill(page, { q: '30,00' });
        await press(page, 'Suchen');
        await page.locator('.bookings summary').click();
        await press(page, 'Alle 30 Zahlungen zeigen');
    }],
    'transfer': ['transfer', async () => {}],
    'transfer-ready': ['transfer', page => press(page, 'Beispiel einsetzen')],
    'transfer-faults': ['transfer', async page => {
        await fill(page, { ...payer, ...bad, 'row-2-name': 'Kunz', 'row-2-iban': 'DE12500105170648489890', 'row-2-amount': '1' });
        await press(page, 'Prüfen');
    }],
    'transfer-odd': ['transfer', async page => {
        await fill(page, { ...payer, ...bad, ...good, date: '26.12.2026', 'row-1-iban': good['row-3-iban'], 'row-1-amount': '0,01' });
        await press(page, 'Prüfen');
    }],
    'debit': ['debit', async () => {}],
    'debit-ready': ['debit', page => press(page, 'Beispiel einsetzen')],
    'columns': ['debit', async page => {
        await upload(page, 'x.csv', 'Wer;IBAN;Beitrag;Farbe\nA;DE89370400440532013000;10,00;rot\nB;DE89370400440532013000;12,00;grün\n');
        await press(page, 'Prüfen');
    }],
    'transfer-large': ['transfer', async page => {
        await upload(page, 'x.csv', 'Empfänger;IBAN;Betrag;Farbe\n' + 'A;DE89370400440532013001;1.000;7\n'.repeat(150));
        await press(page, 'Prüfen');
    }],
    'refused': ['transfer', async page => {
        await page.context().clearCookies();
        await press(page, 'Prüfen');
    }],
};
for (const [name, [where, reach]] of Object.entries(states).filter(([name]) => name.startsWith(only))) {
    for (const [kind, width, options] of [['wide', 1100, {}], ['wide-dark', 1100, { colorScheme: 'dark' }], ['phone', 320, {}], ['phone-dark', 320, { colorScheme: 'dark' }]]) {
        await test(`${name}, ${kind}`, where, async page => {
            await reach(page);
            await page.screenshot({ path: `${folder}/${name}-${kind}.png`, fullPage: true });
            equal(await page.evaluate(() => document.documentElement.scrollWidth), width);
            await page.evaluate(`${axe};0`);
            const found = await page.evaluate(() => axe.run());
            equal(found.violations.map(violation => [violation.id, violation.nodes.map(node => node.html)]), []);
            if (kind === 'wide') {
                await page.emulateMedia({ media: 'print' });
                await page.setViewportSize({ width: 680, height: 960 });
                await page.screenshot({ path: `${folder}/${name}-print.png`, fullPage: true });
            }
        }, { viewport: { width, height: 800 }, ...options });
    }
}
await browser.close();
if (complaints.length > 0) {
    ++failed;
    console.error(`FAILED: the browser complains:\n${complaints.join('\n')}`);
}
console.log(`${passed} passed, ${failed} failed`);
process.exitCode = failed > 0 ? 1 : 0;
