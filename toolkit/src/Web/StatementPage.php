<?php

declare(strict_types=1);

namespace Sepa\Toolkit\Web;

use Sepa\Toolkit\Statement\Reader;
use Sepa\Toolkit\Statement\Statement;
use Symfony\Component\HttpFoundation\Response;

/** Reads a statement file and shows its bookings and the running balance. */
final class StatementPage implements Page
{
    private const EXAMPLE = __DIR__ . '/../../../examples/statement.sta';

    /** Of one file; the rest is counted. */
    private const MAX_STATEMENTS = 100;

    private const MAX_BOOKINGS = 500;

    private View $view;

    public function __construct(View $view)
    {
        $this->view = $view;
    }

    public function respond(Input $input, ?array $notice): Response
    {
        $values = ['hasExample' => is_file(self::EXAMPLE), 'accounts' => [], 'result' => null];
        if ($input->action() !== '') {
            $path = $input->action() === 'example' ? self::EXAMPLE : $input->upload('file');
            $values = ($path === null ? ['result' => ['statements' => null]] : $this->read(Reader::file($path))) + $values;
        }

        return $this->view->page('statement', $values + ['notice' => $notice]);
    }

    /** @return array<string, mixed> */
    private function read(Reader $reader): array
    {
        $accounts = [];
        $last = null;
        $statements = $bookings = $good = 0;
        foreach ($reader as $statement) {
            $good += $statement->balanced && !$statement->faults ? 1 : 0;
            if (!$last || !self::follows($last, $statement)) {
                $accounts[] = new StatementAccount($statement);
            }
            $isShown = ++$statements <= self::MAX_STATEMENTS;
            end($accounts)->add($statement, $isShown ? max(0, self::MAX_BOOKINGS - $bookings) : null);
            $bookings += count($statement->bookings);
            $last = $statement;
        }
        $faults = $reader->faults();

        return [
            'accounts' => array_filter($accounts, static fn (StatementAccount $account): bool => $account->statements !== []),
            'faults' => count($faults) + $statements - $good,
            'result' => [
                'statements' => $statements,
                'bookings' => $bookings,
                'wanting' => $statements - $good,
                'faults' => $faults,
                'isCut' => $statements > self::MAX_STATEMENTS || $bookings > self::MAX_BOOKINGS,
                'most' => [self::MAX_STATEMENTS, self::MAX_BOOKINGS],
            ],
        ];
    }

    /** Whether a statement goes on where another ended. */
    private static function follows(Statement $last, Statement $next): bool
    {
        return $last->account === $next->account && $last->balanced && $next->opening && $last->closing->amount == $next->opening->amount;
    }
}
