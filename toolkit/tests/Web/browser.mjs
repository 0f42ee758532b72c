// Walks through the page in headless Chromium: node browser.mjs ADDRESS FOLDER
// Screenshots and downloads go to the folder. Run by script/test-page.
import { createRequire } from 'node:module';
import { readFileSync, writeFileSync } from 'node:fs';

const [address, folder, browserPath] = process.argv.slice(2);
const { chromium } = createRequire(`${folder}/`)('playwright-core');
const examples = new URL('../../../examples/', import.meta.url).pathname;

let passed = 0, failed = 0;
const complaints = [];
const browser = await chromium.launch({
    executablePath: browserPath,
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
        '--disable-component-update', '--disable-sync'],
});

async function open(where, options = {}) {
    const context = await browser.newContext({ viewport: { width: 1100, height: 800 }, acceptDownloads: true, ...options });
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
    if (got !== expected) throw new Error(`${JSON.stringify(got)} instead of ${JSON.stringify(expected)}`);
}

const heading = page => page.locator('.notice .heading').first().innerText();
const upload = (page, name, text) => page.setInputFiles('#f-file', { name, mimeType: 'text/plain', buffer: Buffer.from(text) });
async function press(page, name) {
    await page.getByRole('button', { name, exact: true }).first().click();
    await page.waitForLoadState('load');
}

async function download(page, click) {
    const [file] = await Promise.all([page.waitForEvent('download'), click()]);
    return { name: file.suggestedFilename(), text: readFileSync(await file.path(), 'utf8') };
}

const html = '<b onclick=x>"&\'';

await test('an IBAN is checked with the keyboard alone', 'iban', async page => {
    await page.keyboard.press('Tab');
    equal(await page.evaluate(() => document.activeElement.textContent), 'Skip to the content');
    while (await page.evaluate(() => document.activeElement.id) !== 'f-iban') await page.keyboard.press('Tab');
    await page.keyboard.type('de89 3704 0044 0532 0130 00\n');
    await page.waitForSelector('.notice');
    equal(await heading(page), 'The IBAN is good');
    equal((await page.locator('.facts dd').allInnerTexts()).join('|'), 'DE89 3704 0044 0532 0130 00|COMMERZBANK AG|COBADEFFXXX');
    equal(await page.inputValue('#f-iban'), 'de89 3704 0044 0532 0130 00');
    await page.fill('#f-iban', html);
    await page.keyboard.press('Enter');
    await page.waitForSelector('.notice.bad');
    equal(await page.inputValue('#f-iban'), html);
});

await test('accounts are converted and banks found', 'iban', async page => {
    await page.fill('#f-account', '532013000');
    await page.fill('#f-bank-code', '370 400 44');
    await press(page, 'Convert');
    equal(await page.locator('#convert dd').first().innerText(), 'DE89 3704 0044 0532 0130 00');
    await page.getByLabel('BIC, IBAN or German bank code').fill('50010517');
    await press(page, 'Look up');
    equal(await heading(page), 'ING-DIBA AG (RETAIL BANKING)');
});

await test('a statement is shown with its running balance', 'statement', async page => {
    await page.setInputFiles('#f-file', `${examples}statement.sta`);
    await press(page, 'Read the file');
    equal(await heading(page), '5 statements, 9 bookings: opening balances and bookings come to the closing balances');
    equal(await page.locator('.badge.good').count(), 5);
    equal(await page.locator('svg[role=img]').count(), 1);
    equal((await page.locator('.bookings tbody tr').nth(1).innerText()).replace(/\s+/g, ' '),
        '2026-11-27 Familie Jäger Rechnung 2026-0218 vom 30.10.2026 Dachstuhl Lindenweg 4, zweite Abschlagszahlung, vielen Dank '
        + 'GUTSCHRIFT ÜBERWEISUNG 4 760.00 23 000.17');
});

await test('damage in a statement is told, and nothing in it is taken for HTML', 'statement', async page => {
    await upload(page, 'x.sta', `:20:${html}\n:25:${html}\n:60F:C261126EUR1,00\n:61:261127RC0,40NTRF${html}\n:86:166?00${html}?20${html}?32${html}\n:86`);
    await press(page, 'Read the file');
    equal(await heading(page), '1 statement, 1 booking: 1 to be looked at');
    equal(await page.locator('h2').innerText(), `${html} EUR`);
    equal(await page.locator('.bookings strong').innerText(), html);
    equal(await page.locator('.badge').first().innerText(), 'cut');
    equal(await page.locator('.bookings .money').nth(1).innerText(), '−0.40');
    await upload(page, 'x.sta', 'nothing');
    await press(page, 'Read the file');
    equal(await heading(page), 'No statement was found');
    await press(page, 'Read the file');
    equal(await heading(page), 'Choose a file first.');
    writeFileSync(`${folder}/large.sta`, 'x'.repeat(10 * 1024 * 1024 + 1));
    await page.setInputFiles('#f-file', `${folder}/large.sta`);
    await press(page, 'Read the file');
    equal(await heading(page), 'The file is too large: it can have 10 MB.');
});

await test('a transfer is typed, mended and downloaded', 'transfer', async page => {
    await page.fill('#f-name', 'Zimmerei Sander GmbH');
    await page.fill('#f-iban', 'DE89 3704 0044 0532 0130 00');
    await page.fill('#f-row-0-name', html);
    await page.fill('#f-row-0-iban', 'DE88370400440532013000');
    await page.fill('#f-row-0-amount', '1.190');
    await page.fill('#f-row-2-name', 'Änne Groß');
    await page.keyboard.press('Enter');
    await page.waitForSelector('.notice.bad');
    equal(await heading(page), '2 payments, 5 faults: there is no document yet');
    equal(await page.getAttribute('#f-bic', 'placeholder'), 'COBADEFFXXX');
    equal(await page.inputValue('#f-row-0-name'), html);
    equal((await page.locator('[aria-invalid]').evaluateAll(fields => fields.map(field => field.id))).join(' '), 'f-row-0-name f-row-0-iban f-row-0-amount f-row-2-iban f-row-2-amount');
    await page.locator('.notes a').nth(1).click();
    equal(await page.evaluate(() => location.hash), '#f-row-0-iban');
    await press(page, 'Download the document');
    equal(await page.locator('.notice.bad').count(), 1);
    await page.fill('#f-row-0-name', 'Müller & Söhne');
    await page.fill('#f-row-0-iban', 'DE89370400440532013000');
    await page.fill('#f-row-0-amount', '1.190,00');
    await page.fill('#f-row-2-iban', 'DE12500105170648489890');
    await page.fill('#f-row-2-amount', '0,01');
    const id = await page.getAttribute('#f-messageId', 'placeholder');
    await press(page, 'Check');
    equal(await heading(page), '2 payments, 1190.01 EUR: ready for the bank');
    const file = await download(page, () => press(page, 'Download the document'));
    equal(file.name, `transfer-${id}.xml`);
    for (const part of [`<MsgId>${id}</MsgId>`, '<CtrlSum>1190.01</CtrlSum>', '<Nm>Müller &amp; Söhne</Nm>', '</Document>']) {
        equal(file.text.includes(part), true);
    }
});

await test('a CSV file fills the form, and odd things are seen before the download', 'transfer', async page => {
    await page.fill('#f-name', 'Zimmerei Sander GmbH');
    await page.fill('#f-iban', 'DE89370400440532013000');
    const row = 'Müller;DE89370400440532013000;1,50;R-1;01.12.2026\r\n';
    await upload(page, 'x.csv', `\ufeffEmpfänger;IBAN;Betrag;Verwendungszweck;Fällig am\r\n${row}${row}`);
    await press(page, 'Download the document');
    equal(await heading(page), '2 payments, 3.00 EUR: ready for the bank');
    equal(await page.locator('.notice.odd .notes').innerText().then(text => /Account and amount of row 2 again/.test(text)), true);
    equal(await page.inputValue('#f-row-1-date'), '01.12.2026');
    equal((await download(page, () => press(page, 'Download the document'))).text.includes('<NbOfTxs>2</NbOfTxs>'), true);
    await upload(page, 'x.csv', `name,iban,amount,colour\nA,DE89370400440532013000,1.00\n`);
    await press(page, 'Check');
    equal((await page.locator('.list tbody').innerText()).includes('Unknown heading'), true);
    await upload(page, 'x.csv', 'name,iban,amount\n' + 'A,DE89370400440532013000,1.00\n'.repeat(150));
    await press(page, 'Check');
    equal(await heading(page), '150 payments, 150.00 EUR: ready for the bank');
});

await test('a form of elsewhere is refused', 'iban', async page => {
    await page.evaluate(() => { document.querySelector('[name=sepa_token]').value = '0'.repeat(32); });
    await page.fill('#f-iban', 'DE89370400440532013000');
    await press(page, 'Check');
    equal(await heading(page), 'The form comes from elsewhere or is too old: please open the page again.');
});

// Nothing is cut off sideways; the pictures are for people to look at.
for (const [device, width] of [['phone', 360], ['desktop', 1100]]) {
    for (const colorScheme of ['light', 'dark']) {
        const shot = (page, name) => page.screenshot({ path: `${folder}/${name}-${device}-${colorScheme}.png`, fullPage: true });
        const options = { viewport: { width, height: 800 }, colorScheme };
        const fits = async page => equal(await page.evaluate(() => document.documentElement.scrollWidth), width);
        await test(`IBANs on a ${device}, ${colorScheme}`, 'iban', async page => {
            await page.fill('#f-iban', 'DE88370400440532013000');
            await press(page, 'Check');
            await fits(page);
            await shot(page, 'iban');
        }, options);
        await test(`statements on a ${device}, ${colorScheme}`, 'statement', async page => {
            await press(page, 'Show an example');
            await fits(page);
            await shot(page, 'statement');
            await upload(page, 'x.sta', readFileSync(`${examples}statement.sta`, 'utf8').replace('C261127EUR16556,78', 'C261127EUR16556,79').slice(0, 1500));
            await press(page, 'Read the file');
            await fits(page);
            await shot(page, 'statement-faults');
        }, options);
        await test(`transfers on a ${device}, ${colorScheme}`, 'transfer', async page => {
            await press(page, 'Fill in an example');
            await fits(page);
            await shot(page, 'transfer');
            await page.fill('#f-row-1-iban', 'DE62701500000020228880');
            await page.fill('#f-row-2-amount', '3.150');
            await page.fill('#f-row-2-name', '');
            await press(page, 'Check');
            await fits(page);
            await shot(page, 'transfer-faults');
        }, options);
    }
}
await browser.close();
if (complaints.length > 0) {
    ++failed;
    console.error(`FAILED: the browser complains:\n${complaints.join('\n')}`);
}
console.log(`${passed} passed, ${failed} failed`);
process.exitCode = failed > 0 ? 1 : 0;
